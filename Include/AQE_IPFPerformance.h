// One logger of the product's instrumentation, with the lowest level at which it is enabled kept beside it: asking
// whether it is on costs one comparison.
#pragma once

#include <atomic>
#include <cstdint>

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

class LOGLogger;

// isEnabled and SyncIPFLogLevel may be called on any thread.
class BRINDLE_API AQE_IPFPerformance {
public:
    // "VKE".
    static const I18NString& GetDefaultComponent();

    // Stands for the logger "Perf.DAM." + component.
    explicit AQE_IPFPerformance(const I18NString& component);
    AQE_IPFPerformance(const AQE_IPFPerformance&) = delete;
    AQE_IPFPerformance& operator=(const AQE_IPFPerformance&) = delete;
    virtual ~AQE_IPFPerformance();

    // As of the last SyncIPFLogLevel. Without a logger only the highest of all levels is enabled, to no effect.
    bool isEnabled(int level) const { return m_logLevel.load(std::memory_order_relaxed) <= level; }

    // Asks the logger again; to be called when the log's configuration may have changed.
    void SyncIPFLogLevel();

private:
    friend class AQE_Performance;

    I18NString m_component;
    std::atomic<std::int32_t> m_logLevel;
    LOGLogger* m_logger; // not owned; may be null
};
