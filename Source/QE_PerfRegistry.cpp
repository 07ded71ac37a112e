// The names are searched and appended under the lock; what measures sees their numbers alone.
#include "QE_PerfRegistry.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "Mortise/AUT_I_UserConfiguration.h"
#include "ZBLCore/ZBLUtSystemInfo.h"
#include "zblipf2/LogTypedLogger.h"

#include "TarnPerformance.h"

constinit ZBLThreadCriticalSection QE_PerfLock(1);
constinit std::atomic<std::int32_t> QE_PerfVerbosity{EPV_Total};
constinit std::atomic<bool> QE_PerfHasCounter{false};

namespace {

constexpr int kUserRootKey = 1;
constexpr int kReadableStamp = 1;
constexpr unsigned kDefaultUnitsPerSecond = 1000;
constexpr double kMillisPerSecond = 1000.0;
constexpr int kMaxComponent = 65535;
constexpr int kSpareRows = 10;

constinit std::atomic<std::int64_t> ticksPerSecond{0};
// Units per second with a counter, units per millisecond without one.
constinit std::atomic<double> timeUnitFactor{kDefaultUnitsPerSecond};

QE_PerfNames BuiltInNames() {
    return {{"UDA", "DMB", "MDDS", "BAPI"},
            {{"sqlInitialize", "sqlTerminate", "sqlMultiDbAttachDirect", "sqlStart", "sqlPrepareWithOptions",
              "sqlAOpen", "sqlOpenResult", "sqlScrollBulkFetch", "sqlGenericOther"},
             {"LoadData"},
             {"MDDSDoRequest"},
             {}}};
}

// The index of the name in the table, at whose end it is entered if it isn't there. The empty name is never found.
int Enter(std::vector<I18NString>& names, const I18NString& name) {
    const auto found = name.empty() ? names.end() : std::find(names.begin(), names.end(), name);
    const auto index = found - names.begin();
    if (found == names.end()) names.push_back(name);
    return static_cast<int>(index);
}

std::int32_t VerbosityOfLogger() {
    const LogTypedLogger* const logger = LogTypedLogger::getInstance("Perf.QFS", "LogPerfIndication");
    if (logger == nullptr) return EPV_Total;
    if (logger->isEnabled(std::numeric_limits<std::int32_t>::min()) || logger->isEnabled(10000)) return EPV_Everything;
    if (logger->isEnabled(20000)) return EPV_Functions;
    if (logger->isEnabled(30000)) return EPV_Queries;
    return EPV_Components;
}

void FindClock() {
    const unsigned unitsPerSecond =
        AUT_I_UserConfiguration::Create(kUserRootKey)
            ->GetUnsigned("General Options", "PerformanceTimeUnitFactor", kDefaultUnitsPerSecond);
    LARGE_INTEGER frequency{};
    const bool hasCounter = QueryPerformanceFrequency(&frequency) != 0;
    timeUnitFactor = hasCounter ? unitsPerSecond : unitsPerSecond / kMillisPerSecond;
    ticksPerSecond = frequency.QuadPart;
    QE_PerfHasCounter = hasCounter;
}

} // namespace

QE_PerfState& QE_PerfGuarded() {
    static QE_PerfState& state = *new QE_PerfState();
    return state;
}

I18NString QE_PerfNames::ComponentName(std::size_t component) const {
    return component < m_components.size() ? m_components[component] : I18NString();
}

I18NString QE_PerfNames::FunctionName(std::size_t component, std::size_t function) const {
    if (component >= m_functions.size() || function >= m_functions[component].size()) return {};
    return m_functions[component][function];
}

QE_PerfNames QE_PerfCopyNames(std::size_t components) {
    const ZBLThreadGuard guard(QE_PerfLock);
    const auto firstOf = [components](const auto& table) {
        const auto end = table.begin() + static_cast<std::ptrdiff_t>(std::min(components, table.size()));
        return std::vector(table.begin(), end);
    };
    const QE_PerfNames& names = QE_PerfGuarded().m_names;
    return {firstOf(names.m_components), firstOf(names.m_functions)};
}

void QE_PerfFitToRegistry(AQE_QueryPerfData& data) {
    const ZBLThreadGuard guard(QE_PerfLock);
    const QE_PerfNames& names = QE_PerfGuarded().m_names;
    const std::size_t components = names.m_components.size();
    QE_PerfGrow(data.m_messages, components);
    QE_PerfGrow(data.m_components, components);
    for (std::size_t component = 0; component < std::min(components, names.m_functions.size()); ++component)
        QE_PerfGrow(data.m_components[component].m_functions, names.m_functions[component].size());
}

I18NString QE_PerfTimeStamp() { return ZBLUtSystemInfo::getTimeStamp(kReadableStamp); }

std::int64_t QE_PerfInUnits(std::int64_t ticks) {
    double units = static_cast<double>(ticks) * timeUnitFactor;
    if (QE_PerfHasCounter) units /= static_cast<double>(ticksPerSecond);
    // The greatest double below 2^63, which a factor of up to 2^32 can exceed.
    constexpr double bound = 9223372036854774784.0;
    return static_cast<std::int64_t>(std::clamp(units, -bound, bound));
}

void TarnPerformance::SetVerbosityLevel(EPerformanceVerbosity) {}

void TarnPerformance::SetLogDir(const I18NString& directory) {
    const ZBLThreadGuard guard(QE_PerfLock);
    QE_PerfGuarded().m_logDir = directory;
}

I18NString TarnPerformance::GetFileName() {
    const ZBLThreadGuard guard(QE_PerfLock);
    const std::unique_ptr<QE_PerfStream>& file = QE_PerfGuarded().m_file;
    return file != nullptr && file->IsGood() ? I18NString(std::string_view(file->GetPath())) : I18NString();
}

int TarnPerformance::RegisterComponent(const I18NString& name) {
    const ZBLThreadGuard guard(QE_PerfLock);
    return Enter(QE_PerfGuarded().m_names.m_components, name);
}

// In both forms for a run its summary comes first, so that it is never shorter than a query, even if memory runs out in
// between; for the same reason no table of components is longer than that of their messages.
int TarnPerformance::RegisterComponent(AQE_PerfData* data, const I18NString& name) {
    if (data == nullptr) return -1;
    const int component = RegisterComponent(name);
    const auto grow = [size = static_cast<std::size_t>(component) + 1](AQE_QueryPerfData& tables) {
        QE_PerfGrow(tables.m_messages, size);
        QE_PerfGrow(tables.m_components, size);
    };
    grow(data->m_summary);
    std::for_each(data->m_queries.begin(), data->m_queries.end(), grow);
    return component;
}

int TarnPerformance::RegisterComponentFunction(int component, const I18NString& name) {
    if (component < 0 || component > kMaxComponent) return -1;
    const auto row = static_cast<std::size_t>(component);
    const ZBLThreadGuard guard(QE_PerfLock);
    std::vector<std::vector<I18NString>>& functions = QE_PerfGuarded().m_names.m_functions;
    if (row >= functions.size()) functions.resize(row + kSpareRows);
    return Enter(functions[row], name);
}

int TarnPerformance::RegisterComponentFunction(AQE_PerfData* data, int component, const I18NString& name) {
    if (data == nullptr) return -1;
    const int function = RegisterComponentFunction(component, name);
    if (function < 0) return -1;
    const auto grow = [at = static_cast<std::size_t>(component), function](AQE_QueryPerfData& tables) {
        if (at >= tables.m_components.size()) return;
        QE_PerfGrow(tables.m_components[at].m_functions, static_cast<std::size_t>(function) + 1);
    };
    grow(data->m_summary);
    std::for_each(data->m_queries.begin(), data->m_queries.end(), grow);
    return function;
}

long TarnPerformance::Initialize(const char*) {
    QE_PerfNames names = BuiltInNames();
    {
        const ZBLThreadGuard guard(QE_PerfLock);
        QE_PerfGuarded().m_names = std::move(names);
    }
    FindClock();
    QE_PerfVerbosity = VerbosityOfLogger();
    return 0;
}

void TarnPerformance::Terminate() {
    const ZBLThreadGuard guard(QE_PerfLock);
    QE_PerfState& state = QE_PerfGuarded();
    state.m_names = QE_PerfNames();
    if (state.m_file != nullptr) state.m_file->Write("</PerformanceData>\n");
    state.m_file.reset();
    state.m_logDir.reset();
}
