#include "zblipf2/LogPerfIndication.h"

#include "ZBLCore/ZBLResourceCounterSet.h"

LogIndication::~LogIndication() = default;

LogPerfIndication::LogPerfIndication(const I18NString& component, int, ZBLResourceCounterSet& counters)
    : m_component(component), m_elapsed(counters) {}

LogPerfIndication::~LogPerfIndication() = default;

std::int64_t LogPerfIndication::Elapsed::Millis() const {
    return m_counters != nullptr ? m_counters->getElapsedMillis() : m_millisAtCopy;
}
