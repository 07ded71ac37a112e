// Start and end of the library: its parts in their order, counted under QE_StartGuard. Beside them the registers that
// callers fill, and the locale operations.
#include "ABrindle.h"

#include <algorithm>
#include <cstdint>
#include <memory>

#include "Mortise/AUT_Library.h"
#include "Mortise/AUT_Text.h"
#include "ZBLCFGAPI/IZBLConfiguration.h"
#include "ZBLCFGAPI/ZBLConfigurationException.h"
#include "ZBLCFGAPI/ZBLConfigurationFactory.h"
#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"

#include "AQE_AuditAPI.h"
#include "AQE_LogFile.h"
#include "AQF_Initialize.h"
#include "AQU_I_ParameterAccessCoordinator.h"
#include "AQU_ParameterMapVKE.h"
#include "QEException.h"
#include "QERes.h"
#include "TarnPerformance.h"

#include "QEMessageNumbers.h"
#include "QE_ResourceTable.h"
#include "QE_StartGuard.h"
#include "QMMacroParserPool.h"

namespace {

constexpr const char* kComponent = "ABrindle";
constexpr const char* kConfigurationFile = "VKEConfig.xml";
// The highest priority outranks every map of an application, the lowest one is the fallback under all of them.
constexpr int kOverridingPriority = 90;
constexpr int kFallbackPriority = -90;

constexpr long kLocaleFailureCode = 901;
constexpr int kMapping = 0; // the configuration service knows no other

// All guarded by QE_StartGuard. The flags let a part of the library that is being started or ended from here call back.
std::int32_t startCount = 0;
bool initializing = false;
bool terminating = false;

AQU_I_ParameterAccessCoordinator* queryEnginePAC = nullptr;
AQU_I_ParameterAccessCoordinator* queryEngineOverridePAC = nullptr;
void* performanceCallbackOP = nullptr;
void* performanceCallbackDMB = nullptr;
void* performanceCallbackMDDS = nullptr;

std::unique_ptr<AQU_I_ParameterMap> MakeConfigurationMap(int priority) {
    return std::make_unique<AQU_ParameterMapVKE>(kConfigurationFile, priority, priority, true);
}

void StartCoordinator() {
    queryEnginePAC = AQU_I_ParameterAccessCoordinator::Create();
    std::unique_ptr<AQU_I_ParameterMap> overriding = MakeConfigurationMap(kOverridingPriority);
    std::unique_ptr<AQU_I_ParameterMap> fallback = MakeConfigurationMap(kFallbackPriority);
    queryEnginePAC->AddParameterMap(overriding.get());
    overriding.release();
    queryEnginePAC->AddParameterMap(fallback.get());
    fallback.release();
}

// queryEnginePAC keeps the pointer, which is no longer valid.
void EndCoordinator() {
    std::vector<AQU_I_ParameterMap*> maps;
    queryEnginePAC->GetMaps(maps);
    for (AQU_I_ParameterMap* const map : maps)
        delete map;
    delete queryEnginePAC;
}

void LogTheLogLevel() {
    AQE_LogFile log("QE");
    log.Log(AUT_I_LogFile::ELL_Failure, I18NString("VKE LogLevel=") + AUT_ToString(log.GetLogLevel(), 10));
}

long StartAll() {
    ZBLIDOM_DOMImplementation::initialize();
    long result = AUT_Initialize(kComponent);
    // A static string that is made now, before any thread needs it.
    AQE_AuditAPI::GetDefaultComponent();
    StartCoordinator();
    // A catalogue that doesn't start is no failure of the library's start.
    if (result == 0) AQF_Initialize(kComponent);
    LogTheLogLevel();
    if (result == 0) result = QMX_StartParserPool();
    if (result == 0) result = TarnPerformance::Initialize(kComponent);
    return result;
}

void EndAll() {
    TarnPerformance::Terminate();
    AQF_Terminate(kComponent);
    QMX_EndParserPool();
    EndCoordinator();
    AUT_Terminate(kComponent);
    ZBLIDOM_DOMImplementation::terminate();
}

const IZBLConfiguration& Configuration() { return ZBLConfigurationFactory::getInstance(); }

// Replaces the locale by the supported one that serves it by its language; for a locale that isn't supported itself.
bool MatchByLanguage(I18NString& locale, const std::vector<I18NString>& supported) {
    if (std::find(supported.begin(), supported.end(), locale) != supported.end()) return true;
    for (const I18NString& entry : supported) {
        if (Configuration().mapToLanguage(entry, kMapping) == locale) {
            locale = entry;
            return true;
        }
    }
    return false;
}

bool MatchContentLocale(I18NString& locale, std::vector<I18NString> supported) {
    const I18NString canonical = Configuration().normalizeLocale(locale);
    if (!Configuration().isContentLocale(canonical)) return false;
    for (I18NString& entry : supported) {
        entry = Configuration().normalizeLocale(entry);
        if (entry == canonical) {
            locale = canonical;
            return true;
        }
    }
    locale = Configuration().mapToLanguage(canonical, kMapping);
    return MatchByLanguage(locale, supported);
}

void LogLocaleFailure(const ZBLConfigurationException& failure) {
    QEException shown(ZBLSeverity::error, kLocaleFailureCode);
    QEAddMessages(shown, kQEMsgContentLocaleFailed, 1, failure.getMessage());
    AQE_LogFile("QE").Log(AUT_I_LogFile::ELL_NotFound, shown.getMessage());
}

} // namespace

long ABrindle_Initialize(const char*) {
    const ZBLThreadGuard guard(QE_StartGuard);
    if (initializing) return 0;
    // An exception leaves the flag set: what a broken start has left behind is never used.
    initializing = true;
    const long result = startCount++ == 0 ? StartAll() : 0;
    initializing = false;
    return result;
}

long ABrindle_Terminate(const char*) {
    const ZBLThreadGuard guard(QE_StartGuard);
    if (initializing || terminating) return 0;
    terminating = true;
    if (--startCount == 0) EndAll();
    terminating = false;
    return 0;
}

AQU_I_ParameterAccessCoordinator* AQE_I_GetQueryEnginePAC() { return queryEnginePAC; }

void AQE_I_SetQueryEngineOverridePAC(AQU_I_ParameterAccessCoordinator* coordinator) {
    queryEngineOverridePAC = coordinator;
}

AQU_I_ParameterAccessCoordinator* AQE_I_GetQueryEngineOverridePAC() { return queryEngineOverridePAC; }

void AQE_SetOPPerformanceCB(void* callback) { performanceCallbackOP = callback; }
void AQE_SetDMBPerformanceCB(void* callback) { performanceCallbackDMB = callback; }
void AQE_SetMDDSPerformanceCB(void* callback) { performanceCallbackMDDS = callback; }
void* AQE_GetOPPerformanceCB() { return performanceCallbackOP; }
void* AQE_GetDMBPerformanceCB() { return performanceCallbackDMB; }
void* AQE_GetMDDSPerformanceCB() { return performanceCallbackMDDS; }

I18NString AQE_GetModulePath() { return Configuration().getFullPath("."); }

I18NString AQE_GetErrorComponent() { return QERes::getString(kQEStringErrorComponent); }

bool AQE_GetProductLocale(I18NString& locale) {
    const I18NString canonical = Configuration().normalizeLocale(locale);
    if (!Configuration().isProductLocale(canonical)) return false;
    locale = Configuration().mapToProductLocale(canonical, kMapping);
    return true;
}

bool AQE_GetContentLocale(I18NString& locale, const std::vector<I18NString>& supported, const I18NString& fallback) {
    try {
        if (MatchContentLocale(locale, supported)) return true;
        locale = Configuration().normalizeLocale(fallback);
        return !locale.empty();
    } catch (const ZBLConfigurationException& failure) {
        LogLocaleFailure(failure);
        locale = Configuration().normalizeLocale(fallback);
        return true;
    }
}
