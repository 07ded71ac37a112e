// Mutual exclusion between threads, and the calling thread's number.
#pragma once

#include <atomic>
#include <mutex>

#include "PlatformApi.h"

// A mutex that the thread which holds it may enter again if it was made recursive. Entering one that isn't recursive a
// second time on one thread raises ZBLAssertError, and so does leaving a section that the thread doesn't hold. Neither
// constructor nor destructor does anything at run time, so that a static section works in static initialisers and at
// exit.
class BRINDLE_PLATFORM_API ZBLThreadCriticalSection {
public:
    constexpr explicit ZBLThreadCriticalSection(int recursive = 0) noexcept : m_recursive(recursive != 0) {}
    ZBLThreadCriticalSection(const ZBLThreadCriticalSection&) = delete;
    ZBLThreadCriticalSection& operator=(const ZBLThreadCriticalSection&) = delete;

    void enter();
    void leave();

private:
    friend class ZBLThreadGuard;

    bool leaveIfHeld() noexcept;

    std::mutex m_mutex;
    // A mark of the thread that holds the mutex. Another thread may read it at any time, but finds its own mark only if
    // it has put it there itself.
    std::atomic<const void*> m_holder{nullptr};
    // How often the holder has entered; the mutex guards it.
    long m_depth = 0;
    bool m_recursive;
};

// Holds a section from its constructor to release() or to its destructor, whichever comes first. Belongs to one thread.
class BRINDLE_PLATFORM_API ZBLThreadGuard {
public:
    explicit ZBLThreadGuard(ZBLThreadCriticalSection& section);
    ~ZBLThreadGuard();
    ZBLThreadGuard(const ZBLThreadGuard&) = delete;
    ZBLThreadGuard& operator=(const ZBLThreadGuard&) = delete;

    // Leaves the section; a second call does nothing.
    void release();

private:
    ZBLThreadCriticalSection* m_section;
};

struct BRINDLE_PLATFORM_API ZBLThread {
    // The number by which the operating system knows the calling thread.
    static unsigned long currentThreadId();
};
