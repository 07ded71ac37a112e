// Critical sections, counted objects and the two kinds of handles.
#include <chrono>
#include <future>
#include <ios>
#include <thread>

#include <gtest/gtest.h>

#include "Mortise/AUT_RefPtr.h"
#include "ZBLCore/ZBLAssertError.h"
#include "ZBLCore/ZBLReferenceCount.h"
#include "ZBLCore/ZBLSmartPointer.h"
#include "ZBLCore/ZBLThread.h"

namespace {

constinit ZBLThreadCriticalSection plain;

// Whether another thread can enter. If the caller holds the section, then once.
bool isFree(ZBLThreadCriticalSection& section) {
    const auto other = std::async(std::launch::async, [&] { const ZBLThreadGuard guard(section); });
    const bool free = other.wait_for(std::chrono::milliseconds(30)) == std::future_status::ready;
    if (!free) section.leave();
    other.wait();
    if (!free) section.enter();
    return free;
}

TEST(CriticalSection, EntriesAreCounted) {
    ZBLThreadCriticalSection recursive(1);
    plain.enter();
    EXPECT_THROW(plain.enter(), ZBLAssertError);
    EXPECT_FALSE(isFree(plain));
    plain.leave();
    EXPECT_TRUE(isFree(plain));

    recursive.enter();
    recursive.enter();
    std::thread([&] { EXPECT_THROW(recursive.leave(), ZBLAssertError); }).join();
    {
        ZBLThreadGuard guard(recursive);
        guard.release();
        guard.release();
    }
    recursive.leave();
    EXPECT_FALSE(isFree(recursive)); // the outer entry still stands
    recursive.leave();
    EXPECT_THROW(recursive.leave(), ZBLAssertError);
    EXPECT_THROW(throw(ZBLThreadGuard(recursive), 1), int);
    EXPECT_TRUE(isFree(recursive));
}

int deletedObjects = 0;

struct Counted : ZBLReferenceCount {
    ~Counted() override { ++deletedObjects; }
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
    EXPECT_EQ(deletedObjects, 1);
    const ZBLSmartPointer<Counted> moved = std::move(pointer);
    EXPECT_TRUE(pointer.isNull() && pointer != moved);
}

struct Base {
    virtual ~Base() { ++deletedObjects; }
    long fill = 0;
};
struct Derived : std::ios_base::failure, Base { // so that a Base has another address than its Derived
    Derived() : failure("") {}
    AUT_RefPtr<Base> next;
};

TEST(RefPtr, LastHandleDeletesThroughTheBase) {
    deletedObjects = 0;
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
    EXPECT_EQ(deletedObjects, 0);
    last = static_cast<const Derived&>(*last).next; // the object that goes holds the source
    EXPECT_EQ(deletedObjects, 1);
    last = AUT_RefPtr<Base>(static_cast<Base*>(nullptr));
    EXPECT_EQ(deletedObjects, 2);
}

} // namespace
