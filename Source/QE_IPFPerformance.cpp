// The bridge to the product's instrumentation: the logger with its cached level, and the guard that sends indications.
#include "AQE_IPFPerformance.h"

#include <limits>

#include "ZBLCore/ZBLThread.h"
#include "zblipf2/LogTypedLogger.h"

#include "AQE_Performance.h"

namespace {

constexpr std::int32_t kOff = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLevels[] = {std::numeric_limits<std::int32_t>::min(), 10000, 20000, 30000, 40000, 50000};
constexpr int kNoOptions = 0;

} // namespace

const I18NString& AQE_IPFPerformance::GetDefaultComponent() {
    static const I18NString& component = *new I18NString("VKE");
    return component;
}

AQE_IPFPerformance::AQE_IPFPerformance(const I18NString& component)
    : m_component(component), m_logLevel(kOff),
      m_logger(LogTypedLogger::getInstance("Perf.DAM." + component, "LogPerfIndication")) {
    SyncIPFLogLevel();
}

AQE_IPFPerformance::~AQE_IPFPerformance() = default;

void AQE_IPFPerformance::SyncIPFLogLevel() {
    std::int32_t lowest = kOff;
    if (m_logger != nullptr) {
        for (const std::int32_t level : kLevels) {
            if (m_logger->isEnabled(level)) {
                lowest = level;
                break;
            }
        }
    }
    m_logLevel.store(lowest, std::memory_order_relaxed);
}

void AQE_Performance::Enter() {
    m_counters = std::make_unique<ZBLResourceCounterSet>(m_owner->m_component, kNoOptions);
    m_indication = std::make_unique<LogPerfIndication>(m_owner->m_component, kNoOptions, *m_counters);
    m_counters->enableResourceCounter();
    LogPerformanceIndication("ENTER");
}

void AQE_Performance::Return() noexcept {
    if (m_owner->isEnabled(m_level)) {
        m_counters->disableResourceCounter();
        try {
            LogPerformanceIndication("RETURN");
        } catch (...) {
            // What fails here is want of memory, and the guard may be ending because of it.
        }
    }
    // In this order: the indication refers to the counters.
    m_indication.reset();
    m_counters.reset();
}

void AQE_Performance::LogPerformanceIndication(const I18NString& status) {
    m_indication->setThreadID(ZBLThread::currentThreadId());
    m_indication->setLevel(m_level);
    m_indication->setSessionID(*m_sessionID);
    m_indication->setRequestID(*m_requestID);
    m_indication->setClassId(*m_classId);
    m_indication->setMethodId(*m_methodId);
    m_indication->setStatus(status);
    m_indication->setLogData(*m_logData);
    // At the highest of all levels a guard runs without a logger, too.
    if (m_owner->m_logger != nullptr) m_owner->m_logger->log(*m_indication);
}
