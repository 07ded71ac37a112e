// A small store by which components that share it reach each other's objects: they agree on the number of a resource
// type, and each type has a list of items, counted from 0. A pool may stand below another one; items of the types 1, 8
// and 11 then live in the higher pool and are shared by all pools directly below that.
//
// Pools take no lock: a pool belongs to one thread at a time, and so does a higher pool with all that are below it.
#pragma once

#include <vector>

#include "ZBLCore/ZBLReferenceCount.h"
#include "ZBLCore/ZBLSmartPointer.h"

#include "BrindleApi.h"

class BRINDLE_API AQU_ResourceItem {
public:
    virtual ~AQU_ResourceItem();
    virtual void* getValue() const;
};

// How many types a new pool has.
inline constexpr long AQU_ResourceTypeCount = 13;

class BRINDLE_API AQU_ResourcePool : public ZBLReferenceCount {
public:
    AQU_ResourcePool();
    AQU_ResourcePool(const AQU_ResourcePool&) = delete;
    AQU_ResourcePool& operator=(const AQU_ResourcePool&) = delete;
    // Deletes the items of this pool; those that live in the higher pool stay.
    ~AQU_ResourcePool() override;

    // A type number that no one else has. It is valid in this pool alone and never shared.
    long GetNewResourceType();

    // The item's index; the pool owns the item from now on, and it must not be added twice. -1 for a type that the pool
    // does not have: the item stays the caller's, as it does when memory runs out.
    long AddResourceItem(long type, AQU_ResourceItem* item);

    // Null if there is no such type or index. The pool keeps the item.
    AQU_ResourceItem* GetResourceItem(long type, long index);

    // Deletes the item and moves those behind it one index down. An item that isn't of this type is left alone.
    void RemoveResourceItem(long type, AQU_ResourceItem* item);

    // Null for none. The higher pool must be on the heap: this one keeps it alive, and the last such pool that goes
    // deletes it. Items are not moved: those of a shared type that are in this pool already can't be reached until the
    // higher pool is taken away again.
    void SetHigherLevelPool(ZBLSmartPointer<AQU_ResourcePool> pool);

private:
    using Items = std::vector<AQU_ResourceItem*>;

    Items* ItemsOf(long type);
    static void EraseAndDelete(Items& items, AQU_ResourceItem* item);

    // Goes last: the higher pool may end with it.
    ZBLSmartPointer<AQU_ResourcePool> m_higherPool;
    std::vector<Items> m_items;
};
