#include "ZBLCore/ZBLResourceCounterSet.h"

#include <chrono>
#include <functional>
#include <utility>

#include "OS/Published.h"
#include "PlatformHooks.h"

namespace {

constinit brindle_platform::Published<std::function<std::int64_t()>> g_clock;

} // namespace

ZBLResourceCounterSet::ZBLResourceCounterSet(const I18NString& name, int) : m_name(name) {}

void ZBLResourceCounterSet::enableResourceCounter() {
    if (m_running) return;
    m_running = true;
    m_startMillis = getCurrentTimeMillis();
}

void ZBLResourceCounterSet::disableResourceCounter() {
    m_elapsedMillis = getElapsedMillis();
    m_running = false;
}

std::int64_t ZBLResourceCounterSet::getElapsedMillis() const {
    return m_running ? m_elapsedMillis + getCurrentTimeMillis() - m_startMillis : m_elapsedMillis;
}

std::int64_t ZBLResourceCounterSet::getCurrentTimeMillis() {
    if (const auto* clock = g_clock.get()) return (*clock)();
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

void brindle_platform::setMillisClock(std::function<std::int64_t()> milliseconds) {
    g_clock.setOrClear(std::move(milliseconds));
}
