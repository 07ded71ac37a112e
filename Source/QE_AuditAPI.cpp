// The audit guard of the engine's entry points.
#include "AQE_AuditAPI.h"

#include "QERes.h"

#include "QE_ResourceTable.h"

I18NString& AQE_AuditAPI::GetDefaultComponent() {
    // Never destroyed: a thread may still be audited while the process ends.
    static I18NString& component = *new I18NString(QERes::getString(kQEStringLogEntry));
    return component;
}

AQE_AuditAPI::AQE_AuditAPI(I18NString& component) : m_enabled(false), m_log(component, AUT_I_LogFile::ELT_Audit) {
    m_enabled = m_log.GetLogLevel() >= AUT_I_LogFile::ELL_Audit;
}

AQE_AuditAPI::~AQE_AuditAPI() {
    if (!m_enabled) return;
    try {
        const I18NString text = "<function name=\"" + m_functionName + "\"><returnvalue><![CDATA[" +
                                (m_success ? "Success" : "Failure") + "]]></returnvalue></function>";
        m_log.AuditLog(AUT_I_LogFile::ELL_Audit, false, m_firstTag, m_secondTag, text);
    } catch (...) {
        // What fails here is want of room, for the text or in memory, and the guard may be ending because of it: the
        // record is lost, the process goes on.
    }
}

void AQE_AuditAPI::AuditFunction(const I18NString& functionName, const I18NString& parameters,
                                 const I18NString& firstTag, const I18NString& secondTag) {
    if (!m_enabled) return;
    m_functionName = functionName;
    m_firstTag = firstTag;
    m_secondTag = secondTag;
    const I18NString text =
        "<function name=\"" + functionName + "\"><parameters>" + parameters + "</parameters></function>";
    m_log.AuditLog(AUT_I_LogFile::ELL_Audit, true, firstTag, secondTag, text);
}

I18NString AQE_AuditAPI::FunctionParm(const I18NString& name, const I18NString& value) {
    return "<item name=\"" + name + "\"><![CDATA[" + value + "]]></item>";
}
