// A guard that an entry point puts on the stack to have its call audited: AuditFunction writes the record of the call,
// the destructor the record of its outcome. One thread at a time.
#pragma once

#include "ZBLCore/I18NString.h"

#include "AQE_LogFile.h"
#include "BrindleApi.h"

class BRINDLE_API AQE_AuditAPI {
public:
    // "QueryEngine": one string for the whole process, made at the first call.
    static I18NString& GetDefaultComponent();

    // Audits to the log entry named by component. Below log level 17 the guard writes nothing at all.
    explicit AQE_AuditAPI(I18NString& component);
    AQE_AuditAPI(const AQE_AuditAPI&) = delete;
    AQE_AuditAPI& operator=(const AQE_AuditAPI&) = delete;
    // Writes the outcome, also when AuditFunction was never called: then with an empty name and empty tags. A record
    // that can't be made is lost.
    virtual ~AQE_AuditAPI();

    // Writes the record of the call. parameters is a sequence of texts from FunctionParm; the tags go to the log with
    // both records.
    void AuditFunction(const I18NString& functionName, const I18NString& parameters, const I18NString& firstTag,
                       const I18NString& secondTag);

    // One parameter as an XML element. Name and value are put in as they are, so a value with "]]>" breaks the element.
    I18NString FunctionParm(const I18NString& name, const I18NString& value);

private:
    I18NString m_functionName;

public:
    // The owner sets it before the guard ends; left false the outcome is a failure.
    bool m_success = false;

private:
    bool m_enabled;
    AQE_LogFile m_log;
    I18NString m_firstTag;
    I18NString m_secondTag;
};
