// A guard on the stack that sends one indication to the product's instrumentation when a scope begins, with the status
// "ENTER", and one when it ends, with the status "RETURN". Resource counters run in between. Where the logger is off
// the guard costs one comparison and allocates nothing. One thread at a time.
#pragma once

#include <memory>

#include "ZBLCore/I18NString.h"
#include "ZBLCore/ZBLResourceCounterSet.h"
#include "zblipf2/LogPerfIndication.h"

#include "AQE_IPFPerformance.h"
#include "BrindleApi.h"

class BRINDLE_API AQE_Performance {
public:
    // A null owner sends nothing. The owner and the texts are the caller's and must outlive the guard; logData may
    // change meanwhile, and each indication has it as it is at the time.
    AQE_Performance(AQE_IPFPerformance* owner, int level, const I18NString& classId, const I18NString& methodId,
                    const I18NString& sessionID, const I18NString& requestID, const I18NString& logData)
        : m_owner(owner), m_level(level) {
        if (m_owner == nullptr || !m_owner->isEnabled(m_level)) return;
        m_classId = &classId;
        m_methodId = &methodId;
        m_sessionID = &sessionID;
        m_requestID = &requestID;
        m_logData = &logData;
        Enter();
    }
    AQE_Performance(const AQE_Performance&) = delete;
    AQE_Performance& operator=(const AQE_Performance&) = delete;
    // A guard whose level was enabled only after its start sends nothing, and neither does one whose level is no longer
    // enabled. An indication that can't be made is lost.
    ~AQE_Performance() {
        if (m_indication != nullptr) Return();
    }

private:
    void Enter();
    void Return() noexcept;
    void LogPerformanceIndication(const I18NString& status);

    AQE_IPFPerformance* m_owner;
    const I18NString* m_classId = nullptr;
    const I18NString* m_methodId = nullptr;
    const I18NString* m_sessionID = nullptr;
    const I18NString* m_requestID = nullptr;
    int m_level;
    std::unique_ptr<LogPerfIndication> m_indication;
    std::unique_ptr<ZBLResourceCounterSet> m_counters;
    const I18NString* m_logData = nullptr;
};
