#include "ZBLCore/ZBLThread.h"

#include "OS/CurrentThread.h"
#include "ZBLCore/ZBLAssertError.h"

namespace {

// Its address tells the threads that live at one time apart.
thread_local char threadMark;

} // namespace

void ZBLThreadCriticalSection::enter() {
    if (m_holder.load(std::memory_order_relaxed) == &threadMark) {
        if (!m_recursive) {
            ZBL_THROW(ZBLAssertError("ZBL_ASSERT(recursive || !held);"), "Platform/ZBLCore/ZBLThread", 18, "QE");
        }
    } else {
        m_mutex.lock();
        m_holder.store(&threadMark, std::memory_order_relaxed);
    }
    ++m_depth;
}

void ZBLThreadCriticalSection::leave() {
    if (!leaveIfHeld()) {
        ZBL_THROW(ZBLAssertError("ZBL_ASSERT(held);"), "Platform/ZBLCore/ZBLThread", 29, "QE");
    }
}

bool ZBLThreadCriticalSection::leaveIfHeld() noexcept {
    if (m_holder.load(std::memory_order_relaxed) != &threadMark) return false;
    if (--m_depth == 0) {
        m_holder.store(nullptr, std::memory_order_relaxed);
        m_mutex.unlock();
    }
    return true;
}

ZBLThreadGuard::ZBLThreadGuard(ZBLThreadCriticalSection& section) : m_section(&section) { section.enter(); }

ZBLThreadGuard::~ZBLThreadGuard() {
    if (m_section != nullptr) m_section->leaveIfHeld();
}

void ZBLThreadGuard::release() {
    ZBLThreadCriticalSection* section = m_section;
    m_section = nullptr;
    if (section != nullptr) section->leave();
}

unsigned long ZBLThread::currentThreadId() { return brindle_platform::currentThreadNumber(); }
