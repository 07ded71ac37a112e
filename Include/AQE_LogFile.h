// A log channel of the engine: records by text, or by the number of a text in the caller's resource file. Objects are
// cheap, made on the stack where there is something to log. An object and its copies belong to one thread; the log
// behind it may be used from any thread.
#pragma once

#include "Mortise/AUT_I_LogFile.h"
#include "Mortise/AUT_RefPtr.h"
#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

class BRINDLE_API AQE_LogFile {
public:
    // The log entry that is used where none is named: "QueryEngine".
    static I18NString GetConfigurationEntryName();

    // component names the resource file from which texts by number come.
    explicit AQE_LogFile(const I18NString& component);
    // Writes to the log entry of that name.
    AQE_LogFile(const I18NString& component, I18NString& entryName);
    // The name is the log entry and the component.
    AQE_LogFile(I18NString& name, AUT_I_LogFile::ELogType type);

    // A channel that writes the first text now and the second when its last copy goes, both at this level and with the
    // further strings as parameters. A text id of 0 stands for no text.
    AQE_LogFile(const I18NString& component, AUT_I_LogFile::ELogLevel level, int firstTextId, int secondTextId);
    AQE_LogFile(const I18NString& component, AUT_I_LogFile::ELogLevel level, int firstTextId, int secondTextId,
                const I18NString& p1);
    AQE_LogFile(const I18NString& component, AUT_I_LogFile::ELogLevel level, int firstTextId, int secondTextId,
                const I18NString& p1, const I18NString& p2);
    AQE_LogFile(const I18NString& component, AUT_I_LogFile::ELogLevel level, int firstTextId, int secondTextId,
                const I18NString& p1, const I18NString& p2, const I18NString& p3);
    AQE_LogFile(const I18NString& component, AUT_I_LogFile::ELogLevel level, int firstTextId, int secondTextId,
                const I18NString& p1, const I18NString& p2, const I18NString& p3, const I18NString& p4);
    AQE_LogFile(const I18NString& component, AUT_I_LogFile::ELogLevel level, int firstTextId, int secondTextId,
                const I18NString& p1, const I18NString& p2, const I18NString& p3, const I18NString& p4,
                const I18NString& p5, const I18NString& p6, const I18NString& p7, const I18NString& p8,
                const I18NString& p9, const I18NString& p10, const I18NString& p11, const I18NString& p12,
                const I18NString& p13, const I18NString& p14, const I18NString& p15, const I18NString& p16);

    virtual ~AQE_LogFile();

    // The record is written if the level is not above GetLogLevel. Place holders of the text ("%1" to "%16") take the
    // parameters. Text id 0 is a number like any other here.
    void Log(AUT_I_LogFile::ELogLevel level, int textId);
    void Log(AUT_I_LogFile::ELogLevel level, const I18NString& text);
    void Log(AUT_I_LogFile::ELogLevel level, int textId, const I18NString& p1);
    void Log(AUT_I_LogFile::ELogLevel level, int textId, const I18NString& p1, const I18NString& p2);
    void Log(AUT_I_LogFile::ELogLevel level, int textId, const I18NString& p1, const I18NString& p2,
             const I18NString& p3);
    void Log(AUT_I_LogFile::ELogLevel level, int textId, const I18NString& p1, const I18NString& p2,
             const I18NString& p3, const I18NString& p4);
    void Log(AUT_I_LogFile::ELogLevel level, int textId, const I18NString& p1, const I18NString& p2,
             const I18NString& p3, const I18NString& p4, const I18NString& p5, const I18NString& p6,
             const I18NString& p7, const I18NString& p8, const I18NString& p9, const I18NString& p10,
             const I18NString& p11, const I18NString& p12, const I18NString& p13, const I18NString& p14,
             const I18NString& p15, const I18NString& p16);

    AUT_I_LogFile::ELogLevel GetLogLevel() const;

    // Writes an audit record; entry tells the record of a call's begin from that of its end.
    virtual void AuditLog(AUT_I_LogFile::ELogLevel level, bool entry, const I18NString& firstTag,
                          const I18NString& secondTag, const I18NString& text);

private:
    AUT_RefPtr<AUT_I_LogFile> m_logFile;
    I18NString m_component;
};
