// Items by type and index, in this pool or in the one above it.
#include "AQU_ResourcePool.h"

#include <algorithm>
#include <utility>

namespace {

// The types whose items live in the higher pool where there is one.
constexpr bool IsShared(long type) { return type == 1 || type == 8 || type == 11; }

} // namespace

AQU_ResourceItem::~AQU_ResourceItem() = default;

void* AQU_ResourceItem::getValue() const { return nullptr; }

AQU_ResourcePool::AQU_ResourcePool() : m_items(AQU_ResourceTypeCount) {}

AQU_ResourcePool::~AQU_ResourcePool() {
    for (const Items& items : m_items) {
        for (AQU_ResourceItem* const item : items)
            delete item;
    }
}

long AQU_ResourcePool::GetNewResourceType() {
    m_items.emplace_back();
    return static_cast<long>(m_items.size()) - 1;
}

long AQU_ResourcePool::AddResourceItem(long type, AQU_ResourceItem* item) {
    Items* const items = ItemsOf(type);
    if (items == nullptr) return -1;
    items->push_back(item);
    return static_cast<long>(items->size()) - 1;
}

AQU_ResourceItem* AQU_ResourcePool::GetResourceItem(long type, long index) {
    const Items* const items = ItemsOf(type);
    if (items == nullptr || index < 0 || index >= static_cast<long>(items->size())) return nullptr;
    return (*items)[static_cast<std::size_t>(index)];
}

void AQU_ResourcePool::RemoveResourceItem(long type, AQU_ResourceItem* item) {
    if (Items* const items = ItemsOf(type)) EraseAndDelete(*items, item);
}

void AQU_ResourcePool::SetHigherLevelPool(ZBLSmartPointer<AQU_ResourcePool> pool) { m_higherPool = std::move(pool); }

// The higher pool's own vectors, even if it stands below another one: sharing goes one pool up. Null for a type that
// this pool doesn't have.
AQU_ResourcePool::Items* AQU_ResourcePool::ItemsOf(long type) {
    if (type < 0 || type >= static_cast<long>(m_items.size())) return nullptr;
    AQU_ResourcePool& store = m_higherPool && IsShared(type) ? *m_higherPool : *this;
    return &store.m_items[static_cast<std::size_t>(type)];
}

void AQU_ResourcePool::EraseAndDelete(Items& items, AQU_ResourceItem* item) {
    const auto found = std::find(items.begin(), items.end(), item);
    if (found == items.end()) return;
    items.erase(found);
    delete item;
}
