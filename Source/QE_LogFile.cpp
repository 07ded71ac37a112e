// The engine's log channel: it only finds the texts, the log itself belongs to the platform.
#include "AQE_LogFile.h"

#include "Mortise/AUT_Text.h"

#include "QERes.h"

#include "QE_ResourceTable.h"

namespace {

using Level = AUT_I_LogFile::ELogLevel;

I18NString TextOrNone(int textId, const I18NString& component) {
    return textId != 0 ? AQE_ResourceGetString(textId, component) : AUT_GetEmptyString();
}

template <class... P>
AUT_RefPtr<AUT_I_LogFile> CreateWithTexts(const I18NString& component, Level level, int firstTextId, int secondTextId,
                                          const P&... further) {
    const I18NString secondText = TextOrNone(secondTextId, component);
    const I18NString firstText = TextOrNone(firstTextId, component);
    return AUT_I_LogFile::Create(AQE_LogFile::GetConfigurationEntryName(), level, firstText, secondText, further...);
}

} // namespace

I18NString AQE_LogFile::GetConfigurationEntryName() { return QERes::getString(kQEStringLogEntry); }

AQE_LogFile::AQE_LogFile(const I18NString& component)
    : m_logFile(AUT_I_LogFile::Create(GetConfigurationEntryName())), m_component(component) {}

AQE_LogFile::AQE_LogFile(const I18NString& component, I18NString& entryName)
    : m_logFile(AUT_I_LogFile::Create(entryName)), m_component(component) {}

AQE_LogFile::AQE_LogFile(I18NString& name, AUT_I_LogFile::ELogType type)
    : m_logFile(AUT_I_LogFile::Create(name, type)), m_component(name) {}

AQE_LogFile::AQE_LogFile(const I18NString& component, Level level, int firstTextId, int secondTextId)
    : m_logFile(CreateWithTexts(component, level, firstTextId, secondTextId)), m_component(component) {}

AQE_LogFile::AQE_LogFile(const I18NString& component, Level level, int firstTextId, int secondTextId,
                         const I18NString& p1)
    : m_logFile(CreateWithTexts(component, level, firstTextId, secondTextId, p1)), m_component(component) {}

AQE_LogFile::AQE_LogFile(const I18NString& component, Level level, int firstTextId, int secondTextId,
                         const I18NString& p1, const I18NString& p2)
    : m_logFile(CreateWithTexts(component, level, firstTextId, secondTextId, p1, p2)), m_component(component) {}

AQE_LogFile::AQE_LogFile(const I18NString& component, Level level, int firstTextId, int secondTextId,
                         const I18NString& p1, const I18NString& p2, const I18NString& p3)
    : m_logFile(CreateWithTexts(component, level, firstTextId, secondTextId, p1, p2, p3)), m_component(component) {}

AQE_LogFile::AQE_LogFile(const I18NString& component, Level level, int firstTextId, int secondTextId,
                         const I18NString& p1, const I18NString& p2, const I18NString& p3, const I18NString& p4)
    : m_logFile(CreateWithTexts(component, level, firstTextId, secondTextId, p1, p2, p3, p4)), m_component(component) {}

AQE_LogFile::AQE_LogFile(const I18NString& component, Level level, int firstTextId, int secondTextId,
                         const I18NString& p1, const I18NString& p2, const I18NString& p3, const I18NString& p4,
                         const I18NString& p5, const I18NString& p6, const I18NString& p7, const I18NString& p8,
                         const I18NString& p9, const I18NString& p10, const I18NString& p11, const I18NString& p12,
                         const I18NString& p13, const I18NString& p14, const I18NString& p15, const I18NString& p16)
    : m_logFile(CreateWithTexts(component, level, firstTextId, secondTextId, p1, p2, p3, p4, p5, p6, p7, p8, p9, p10,
                                p11, p12, p13, p14, p15, p16)),
      m_component(component) {}

AQE_LogFile::~AQE_LogFile() = default;

void AQE_LogFile::Log(Level level, int textId) { m_logFile->Log(level, AQE_ResourceGetString(textId, m_component)); }

void AQE_LogFile::Log(Level level, const I18NString& text) { m_logFile->Log(level, text); }

void AQE_LogFile::Log(Level level, int textId, const I18NString& p1) {
    m_logFile->Log(level, AQE_ResourceGetString(textId, m_component), p1);
}

void AQE_LogFile::Log(Level level, int textId, const I18NString& p1, const I18NString& p2) {
    m_logFile->Log(level, AQE_ResourceGetString(textId, m_component), p1, p2);
}

void AQE_LogFile::Log(Level level, int textId, const I18NString& p1, const I18NString& p2, const I18NString& p3) {
    m_logFile->Log(level, AQE_ResourceGetString(textId, m_component), p1, p2, p3);
}

void AQE_LogFile::Log(Level level, int textId, const I18NString& p1, const I18NString& p2, const I18NString& p3,
                      const I18NString& p4) {
    m_logFile->Log(level, AQE_ResourceGetString(textId, m_component), p1, p2, p3, p4);
}

void AQE_LogFile::Log(Level level, int textId, const I18NString& p1, const I18NString& p2, const I18NString& p3,
                      const I18NString& p4, const I18NString& p5, const I18NString& p6, const I18NString& p7,
                      const I18NString& p8, const I18NString& p9, const I18NString& p10, const I18NString& p11,
                      const I18NString& p12, const I18NString& p13, const I18NString& p14, const I18NString& p15,
                      const I18NString& p16) {
    m_logFile->Log(level, AQE_ResourceGetString(textId, m_component), p1, p2, p3, p4, p5, p6, p7, p8, p9, p10, p11, p12,
                   p13, p14, p15, p16);
}

Level AQE_LogFile::GetLogLevel() const { return m_logFile->GetLogLevel(); }

void AQE_LogFile::AuditLog(Level level, bool entry, const I18NString& firstTag, const I18NString& secondTag,
                           const I18NString& text) {
    m_logFile->AuditLog(level, entry, firstTag, secondTag, text);
}
