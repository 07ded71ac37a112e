#include "zblipf2/LogPerfIndication.h"

#include "ZBLCore/ZBLResourceCounterSet.h"

LogIndication::~LogIndication() = default;

LogPerfIndication::LogPerfIndication(const I18NString& component, int, ZBLResourceCounterSet& counters)
    : m_component(component), m_counters(counters) {}

LogPerfIndication::~LogPerfIndication() = default;

std::int64_t LogPerfIndication::getElapsedMillis() const { return m_counters.getElapsedMillis(); }
