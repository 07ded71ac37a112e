// Counters that run between two points of a program, and the clock that they go by.
#pragma once

#include <cstdint>

#include "PlatformApi.h"
#include "ZBLCore/I18NString.h"

// One thread at a time.
class BRINDLE_PLATFORM_API ZBLResourceCounterSet {
public:
    // The counters begin stopped, at 0. The only options are 0.
    ZBLResourceCounterSet(const I18NString& name, int options);

    // Starting what runs and stopping what stands does nothing; a new start goes on from where the counters stopped.
    void enableResourceCounter();
    void disableResourceCounter();

    // How long the counters have been running, up to now if they are.
    std::int64_t getElapsedMillis() const;

    // A clock that never goes back; only differences mean something. Any thread.
    static std::int64_t getCurrentTimeMillis();

private:
    I18NString m_name;
    bool m_running = false;
    std::int64_t m_startMillis = 0;
    std::int64_t m_elapsedMillis = 0;
};
