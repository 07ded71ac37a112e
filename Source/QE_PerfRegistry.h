// What stands behind TarnPerformance: the names, the performance file and the clock, as the data of a run and its
// guards see them.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "PlatformOs.h"
#include "ZBLCore/I18NString.h"
#include "ZBLCore/ZBLResourceCounterSet.h"
#include "ZBLCore/ZBLThread.h"

#include "AQE_PerfData.h"

#include "QE_PerfStream.h"

// Guards QE_PerfGuarded; recursive.
extern ZBLThreadCriticalSection QE_PerfLock;

struct QE_PerfNames {
    std::vector<I18NString> m_components;
    std::vector<std::vector<I18NString>> m_functions; // by component; may be shorter or longer than the components

    // Empty where there is no such name: what ends later than the library has numbers without names.
    I18NString ComponentName(std::size_t component) const;
    I18NString FunctionName(std::size_t component, std::size_t function) const;
};

struct QE_PerfState {
    QE_PerfNames m_names;
    std::optional<I18NString> m_logDir;
    std::unique_ptr<QE_PerfStream> m_file; // null until a run has ended
};

// Lives to the end of the process, since runs may end that late.
QE_PerfState& QE_PerfGuarded();

// A copy of the names of the first so many components.
QE_PerfNames QE_PerfCopyNames(std::size_t components);

// Makes the tables long enough for all that is registered.
void QE_PerfFitToRegistry(AQE_QueryPerfData& data);

template <class Vector>
void QE_PerfGrow(Vector& vector, std::size_t size) {
    if (vector.size() < size) vector.resize(size);
}

// Set at the library's start, read by guards on any thread at any time.
extern std::atomic<std::int32_t> QE_PerfVerbosity;
extern std::atomic<bool> QE_PerfHasCounter;

// Now, as a run's record tells when the run began and ended.
I18NString QE_PerfTimeStamp();

// In ticks of the performance counter, or in milliseconds where there is none.
inline std::int64_t QE_PerfNow() {
    if (!QE_PerfHasCounter.load(std::memory_order_relaxed)) return ZBLResourceCounterSet::getCurrentTimeMillis();
    LARGE_INTEGER ticks;
    QueryPerformanceCounter(&ticks);
    return ticks.QuadPart;
}

// A difference of two readings in the unit that the settings ask for, milliseconds by default; without its fraction.
std::int64_t QE_PerfInUnits(std::int64_t ticks);
