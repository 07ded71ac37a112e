// Critical sections, counted objects and the two kinds of handles.
#include <atomic>
#include <chrono>
#include <ios>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "Mortise/AUT_RefPtr.h"
#include "ZBLCore/ZBLAssertError.h"
#include "ZBLCore/ZBLReferenceCount.h"
#include "ZBLCore/ZBLSmartPointer.h"
#include "ZBLCore/ZBLThread.h"

namespace {

constinit ZBLThreadCriticalSection staticSection;

// Whether another thread can enter. If the caller holds the section, then once.
bool isFree(ZBLThreadCriticalSection& section) {
    std::atomic<bool> entered = false;
    std::thread other([&] {
        const ZBLThreadGuard guard(section);
        entered = true;
    });
    for (int wait = 0; wait < 30 && !entered; ++wait)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    const bool free = entered;
    if (!free) section.leave();
    other.join();
    if (!free) section.enter();
    return free;
}

TEST(CriticalSection, SecondEntryOnOneThread) {
    ZBLThreadCriticalSection plain;
    plain.enter();
    EXPECT_THROW(plain.enter(), ZBLAssertError);
    EXPECT_FALSE(isFree(plain));
    plain.leave();
    EXPECT_TRUE(isFree(plain));

    ZBLThreadCriticalSection recursive(1);
    for (int depth = 0; depth < 3; ++depth)
        recursive.enter();
    std::thread([&] { EXPECT_THROW(recursive.leave(), ZBLAssertError); }).join();
    for (int depth = 0; depth < 2; ++depth)
        recursive.leave();
    EXPECT_FALSE(isFree(recursive));
    recursive.leave();
    EXPECT_TRUE(isFree(recursive));
    EXPECT_THROW(recursive.leave(), ZBLAssertError);
}

TEST(CriticalSection, GuardLeavesOnce) {
    ZBLThreadCriticalSection section(1);
    section.enter();
    {
        ZBLThreadGuard guard(section);
        guard.release();
        guard.release();
    }
    EXPECT_FALSE(isFree(section)); // the outer entry still stands
    section.leave();
    EXPECT_THROW(throw(ZBLThreadGuard(section), 1), int);
    EXPECT_TRUE(isFree(section));
}

TEST(CriticalSection, OnlyOneThreadAtATime) {
    long count = 0;
    const unsigned long mine = ZBLThread::currentThreadId();
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([&count, mine] {
            EXPECT_NE(ZBLThread::currentThreadId(), mine);
            for (int round = 0; round < 2000; ++round) {
                const ZBLThreadGuard guard(staticSection);
                ++count;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(count, 8000);
}

int livingObjects = 0;

struct Counted : ZBLReferenceCount {
    Counted() { ++livingObjects; }
    Counted(const Counted& other) : ZBLReferenceCount(other) { ++livingObjects; }
    Counted& operator=(const Counted&) = default;
    ~Counted() override { --livingObjects; }

    ZBLSmartPointer<Counted> next;
};

TEST(SmartPointer, CountsAndKeepsWhatItTakes) {
    ZBLSmartPointer<Counted> pointer = new Counted;
    pointer = static_cast<const ZBLSmartPointer<Counted>&>(pointer);
    pointer = pointer.get();
    Counted copy(*pointer);
    EXPECT_EQ(copy.getReferenceCount(), 0);
    EXPECT_EQ(copy.removeReference(), 0); // nobody has one, so nothing is deleted
    *pointer = copy;
    EXPECT_EQ(pointer->getReferenceCount(), 1);
    pointer->next = new Counted;
    pointer = pointer->next; // the object that goes holds the source
    EXPECT_EQ(livingObjects, 2);
    const ZBLSmartPointer<Counted> moved = std::move(pointer);
    EXPECT_TRUE(pointer.isNull() && pointer != moved);
    EXPECT_EQ(moved->addReference(), 2);
    EXPECT_EQ(moved->removeReference(), 1);
}

struct Base {
    virtual ~Base() { --livingObjects; }
    long fill = 0;
};
struct Derived : std::ios_base::failure, Base { // so that a Base has another address than its Derived
    Derived() : failure("") { ++livingObjects; }
    AUT_RefPtr<Base> next;
};

static_assert(!std::is_convertible_v<AUT_RefPtr<Base>, AUT_RefPtr<Derived>>);
static_assert(!std::is_convertible_v<Base*, AUT_RefPtr<Base>>);

TEST(RefPtr, LastHandleDeletesThroughTheBase) {
    livingObjects = 0;
    AUT_RefPtr<const Base> last;
    {
        AUT_RefPtr<Derived> first(new Derived);
        first->next = AUT_RefPtr<Base>(new Derived);
        last = first;
        last = static_cast<const AUT_RefPtr<const Base>&>(last);
        EXPECT_TRUE(last == first);
        const AUT_RefPtr<Derived> moved = std::move(first);
        EXPECT_TRUE(first.isNull() && !first && moved);
    }
    EXPECT_EQ(livingObjects, 2);
    last = static_cast<const Derived&>(*last).next; // the object that goes holds the source
    EXPECT_EQ(livingObjects, 1);
    last = AUT_RefPtr<Base>(static_cast<Base*>(nullptr));
    EXPECT_EQ(livingObjects, 0);
}

} // namespace
