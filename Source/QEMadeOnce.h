// Objects that are made on their first need and live as long as the process: tables of words, constant strings. An
// object is filled before it is published and only read from then on, so finding one that is there takes one load and
// no lock.
#pragma once

#include <atomic>

#include "ZBLCore/ZBLThread.h"

// The published object. If there is none, it is what `make` answers, a std::unique_ptr, under the lock; when that
// throws, nothing is published, and the next call makes it again. Any thread.
template <class T, class Make>
const T& QEMadeOnce(std::atomic<const T*>& published, ZBLThreadCriticalSection& lock, const Make& make) {
    if (const T* const made = published.load(std::memory_order_acquire)) return *made;
    const ZBLThreadGuard guard(lock);
    const T* made = published.load(std::memory_order_relaxed);
    if (made == nullptr) {
        made = make().release();
        published.store(made, std::memory_order_release);
    }
    return *made;
}
