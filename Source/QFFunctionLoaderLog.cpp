// One operation for each record: its text by number, its level, its parameters.
#include "QFFunctionLoaderLog.h"

#include <utility>

#include "Mortise/AUT_Text.h"

#include "QEMessageNumbers.h"

namespace {

using Level = AUT_I_LogFile::ELogLevel;

// Texts are looked up and put together for records that are written only.
template <class... Parameters>
void Log(AQE_LogFile& log, Level level, int textId, const Parameters&... parameters) {
    if (log.GetLogLevel() >= level) log.Log(level, textId, parameters...);
}

// There is no form for six parameters but the one for sixteen.
void LogSix(AQE_LogFile& log, Level level, int textId, const I18NString& p1, const I18NString& p2, const I18NString& p3,
            const I18NString& p4, const I18NString& p5, const I18NString& p6) {
    const I18NString none;
    Log(log, level, textId, p1, p2, p3, p4, p5, p6, none, none, none, none, none, none, none, none, none, none);
}

} // namespace

AQE_LogFile AQF_LoaderLog::MakeFunctionLog() {
    I18NString entryName("FDS");
    return AQE_LogFile("QE", entryName);
}

void AQF_LoaderLog::NoTextsForLocale(const I18NLocale& locale, const AQF_FunctionPool& pool) {
    I18NString available = pool.descriptionFiles.empty() ? "no locales are available" : "Available locales: ";
    const char* separator = "";
    for (const auto& [name, files] : pool.descriptionFiles)
        available.append(std::exchange(separator, ", ")).append(name);
    Log(m_log, Level::ELL_NotFound, kQELogNoTextsForLocale, available, locale.getName());
}

void AQF_LoaderLog::MalformedRule(int ordinal, const I18NString& file, const I18NString& entryId) {
    Log(m_log, Level::ELL_Diagnostic, kQELogMalformedRule, AUT_ToString(ordinal), file, entryId);
}

void AQF_LoaderLog::TextIsGivenAgain(const I18NLocale& locale, const I18NString& id, const I18NString& text,
                                     const I18NString& kept) {
    Log(m_functionLog, text == kept ? Level::ELL_Diagnostic : Level::ELL_NotFound, kQELogTextIsGivenAgain,
        locale.getName(), id, text, kept);
}

void AQF_LoaderLog::KindHasNoName(const AQF_FunctionDescription& entry, const I18NString& name) {
    Log(m_log, Level::ELL_NotFound, kQELogKindHasNoName, entry.id, name);
}

void AQF_LoaderLog::KindsDiffer(const AQF_FunctionDescription& entry, const I18NString& name,
                                const AQF_FunctionDescription& other, const I18NString& otherText) {
    LogSix(m_log, Level::ELL_Diagnostic, kQELogKindsDiffer, AUT_ToString(entry.kind), entry.id, name,
           AUT_ToString(other.kind), other.id, otherText);
}

void AQF_LoaderLog::BothHaveLibraries(const AQF_FunctionDescription& entry, const I18NString& name) {
    Log(m_functionLog, Level::ELL_NotFound, kQELogBothHaveLibraries, I18NString("FT_function"), entry.id, name);
}

void AQF_LoaderLog::CanonicalsDiffer(const AQF_FunctionDescription& entry, const I18NString& name,
                                     const AQF_FunctionDescription& other, const I18NString& otherText) {
    LogSix(m_log, Level::ELL_NotFound, kQELogCanonicalsDiffer, entry.id, name, entry.canonical, other.id, otherText,
           other.canonical);
}
