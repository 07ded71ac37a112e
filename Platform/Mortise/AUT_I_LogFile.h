// Log records by entry name and level.
//
// Records of all objects go to one sink: the test hook's function, else the file (or "-", standard error) that
// BRINDLE_LOG names, else nowhere. A line of the file holds UTC time, process, thread, entry, level and text, with tabs
// between; an audit record has ENTER or EXIT and its two tags in front of the text. Logging never throws.
#pragma once

#include "Mortise/AUT_RefPtr.h"
#include "PlatformApi.h"
#include "ZBLCore/I18NString.h"

class BRINDLE_PLATFORM_API AUT_I_LogFile {
public:
    // Any int is a level; the higher, the more detail.
    enum ELogLevel : int { ELL_None = 0, ELL_Failure = 1, ELL_NotFound = 3, ELL_Diagnostic = 7, ELL_Audit = 17 };
    enum ELogType : int { ELT_Log = 0, ELT_Audit = 1 };

    virtual ~AUT_I_LogFile();

    // A record is written if its level isn't above GetLogLevel(). "%1" to "%16" in the text stand for the parameters,
    // one without a parameter stays; a parameter without a place holder is appended as " [p]" unless it is empty.
    virtual void Log(ELogLevel level, const I18NString& text, const I18NString& p1, const I18NString& p2,
                     const I18NString& p3, const I18NString& p4, const I18NString& p5, const I18NString& p6,
                     const I18NString& p7, const I18NString& p8, const I18NString& p9, const I18NString& p10,
                     const I18NString& p11, const I18NString& p12, const I18NString& p13, const I18NString& p14,
                     const I18NString& p15, const I18NString& p16) = 0;
    virtual void Log(ELogLevel level, const I18NString& text, const I18NString& p1, const I18NString& p2,
                     const I18NString& p3, const I18NString& p4) = 0;
    virtual void Log(ELogLevel level, const I18NString& text, const I18NString& p1, const I18NString& p2,
                     const I18NString& p3) = 0;
    virtual void Log(ELogLevel level, const I18NString& text, const I18NString& p1, const I18NString& p2) = 0;
    virtual void Log(ELogLevel level, const I18NString& text, const I18NString& p1) = 0;
    virtual void Log(ELogLevel level, const I18NString& text) = 0;

    // A record of a call that is entered or left. The text is written as it stands.
    virtual void AuditLog(ELogLevel level, bool entry, const I18NString& tag1, const I18NString& tag2,
                          const I18NString& text) = 0;

    // The level of the entry as it was when this object was made: the hook's, else the option of the entry's name in
    // the section "Log" of the user's settings, else the option "Default" there, else 3.
    virtual ELogLevel GetLogLevel() const = 0;

    // Makes a new object, cheap enough for the stack of whoever has something to log. Any thread may call an object,
    // its handles stay on one. The type says what the object is for; the records of both types go to the one sink.
    static AUT_RefPtr<AUT_I_LogFile> Create(const I18NString& name);
    static AUT_RefPtr<AUT_I_LogFile> Create(const I18NString& name, ELogType type);

    // Logs `first` at the level now and `last` when the last handle goes, unless they are empty, both with the further
    // strings as parameters.
    static AUT_RefPtr<AUT_I_LogFile> Create(const I18NString& name, ELogLevel level, const I18NString& first,
                                            const I18NString& last);
    static AUT_RefPtr<AUT_I_LogFile> Create(const I18NString& name, ELogLevel level, const I18NString& first,
                                            const I18NString& last, const I18NString& p1);
    static AUT_RefPtr<AUT_I_LogFile> Create(const I18NString& name, ELogLevel level, const I18NString& first,
                                            const I18NString& last, const I18NString& p1, const I18NString& p2);
    static AUT_RefPtr<AUT_I_LogFile> Create(const I18NString& name, ELogLevel level, const I18NString& first,
                                            const I18NString& last, const I18NString& p1, const I18NString& p2,
                                            const I18NString& p3);
    static AUT_RefPtr<AUT_I_LogFile> Create(const I18NString& name, ELogLevel level, const I18NString& first,
                                            const I18NString& last, const I18NString& p1, const I18NString& p2,
                                            const I18NString& p3, const I18NString& p4);
    static AUT_RefPtr<AUT_I_LogFile> Create(const I18NString& name, ELogLevel level, const I18NString& first,
                                            const I18NString& last, const I18NString& p1, const I18NString& p2,
                                            const I18NString& p3, const I18NString& p4, const I18NString& p5,
                                            const I18NString& p6, const I18NString& p7, const I18NString& p8,
                                            const I18NString& p9, const I18NString& p10, const I18NString& p11,
                                            const I18NString& p12, const I18NString& p13, const I18NString& p14,
                                            const I18NString& p15, const I18NString& p16);
};
