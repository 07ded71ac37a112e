// Base classes of objects that count the references on themselves. The count is a plain number, so an object and all
// who refer to it stay on one thread at a time.
#pragma once

#include "PlatformApi.h"

// The count begins at 0. An object that a reference has been taken on must be on the heap: dropping the last one
// deletes it. A copy begins a count of its own, and assignment leaves both counts alone.
class BRINDLE_PLATFORM_API ZBLThreadUnsafeReferenceCount {
public:
    ZBLThreadUnsafeReferenceCount() noexcept = default;
    ZBLThreadUnsafeReferenceCount(const ZBLThreadUnsafeReferenceCount&) noexcept {}
    ZBLThreadUnsafeReferenceCount& operator=(const ZBLThreadUnsafeReferenceCount&) noexcept { return *this; }
    virtual ~ZBLThreadUnsafeReferenceCount();

    // Both answer the new count; when removeReference() answers 0, the object is gone. Removing a reference that nobody
    // has taken does nothing.
    virtual long addReference();
    virtual long removeReference();
    virtual long getReferenceCount() const;

protected:
    // Called when the last reference goes; deletes the object.
    virtual void cleanup();

private:
    long m_count = 0;
};

class BRINDLE_PLATFORM_API ZBLReferenceCount : public ZBLThreadUnsafeReferenceCount {
public:
    ~ZBLReferenceCount() override;
};
