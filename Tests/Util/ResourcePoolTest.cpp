#include <string>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

#include "AQU_ResourcePool.h"

namespace {

std::string deleted; // names of items, as they went

struct Item : AQU_ResourceItem {
    explicit Item(char name) : m_name(name) {}
    ~Item() override { deleted += m_name; }
    char m_name;
};

// The names of the type's items, "-" for a null one.
std::string List(AQU_ResourcePool& pool, long type, long size) {
    std::string names;
    for (long i = 0; i < size; ++i) {
        const auto* const item = static_cast<const Item*>(pool.GetResourceItem(type, i));
        names += item == nullptr ? '-' : item->m_name;
    }
    EXPECT_EQ(pool.GetResourceItem(type, size), nullptr) << "type " << type;
    return names;
}

TEST(ResourcePool, ItemsAreListedByTypeAndDeletedOnce) {
    deleted.clear();
    {
        AQU_ResourcePool pool;
        const std::tuple<long, char, long> rows[] = {{12, 'a', 0}, {0, 'b', 0}, {8, 'c', 0}, {8, 'd', 1}, {8, 'e', 2}};
        for (const auto& [type, name, index] : rows)
            EXPECT_EQ(pool.AddResourceItem(type, new Item(name)), index);
        EXPECT_EQ(pool.AddResourceItem(8, nullptr), 3);
        pool.RemoveResourceItem(8, pool.GetResourceItem(12, 0)); // of another type
        EXPECT_EQ(List(pool, 8, 4) + deleted, "cde-");
        pool.RemoveResourceItem(8, pool.GetResourceItem(8, 0));
        pool.RemoveResourceItem(8, nullptr);
        EXPECT_EQ(List(pool, 8, 2) + List(pool, 1, 0) + deleted, "dec");
        for (const long type : {13L, -1L, 1L << 40}) {
            EXPECT_TRUE(pool.AddResourceItem(type, nullptr) == -1 && pool.GetResourceItem(type, 0) == nullptr) << type;
            pool.RemoveResourceItem(type, pool.GetResourceItem(8, 0));
        }
        EXPECT_EQ(pool.GetNewResourceType(), 13);
        EXPECT_EQ(pool.GetNewResourceType(), 14);
        EXPECT_EQ(pool.AddResourceItem(13, new Item('f')), 0);
        EXPECT_EQ(pool.GetResourceItem(13, -1), nullptr);
    }
    EXPECT_EQ(deleted, "cbdeaf") << "by type, then by index";
}

TEST(ResourcePool, SharedTypesLiveOnePoolUp) {
    deleted.clear();
    ZBLSmartPointer<AQU_ResourcePool> low(new AQU_ResourcePool), top(new AQU_ResourcePool), other(new AQU_ResourcePool);
    auto* const middle = new AQU_ResourcePool;
    low->AddResourceItem(8, new Item('A'));
    low->SetHigherLevelPool(middle), middle->SetHigherLevelPool(top), other->SetHigherLevelPool(middle);
    EXPECT_EQ(List(*low, 8, 0), "") << "what was there before isn't reached";
    for (long type = 0; type < 13; ++type)
        EXPECT_EQ(low->AddResourceItem(type, new Item(static_cast<char>('a' + type))), 0);
    EXPECT_EQ(List(*low, 1, 1) + List(*low, 2, 1) + List(*low, 8, 1), "bci");
    EXPECT_EQ(List(*top, 1, 0) + List(*top, 8, 0), "") << "not two pools up";
    middle->SetHigherLevelPool(nullptr);
    EXPECT_EQ(List(*middle, 1, 1) + List(*middle, 2, 0) + List(*middle, 8, 1), "bi");
    EXPECT_EQ(top->getReferenceCount(), 1);
    low->RemoveResourceItem(11, low->GetResourceItem(11, 0));
    low = nullptr;
    EXPECT_EQ(List(*other, 1, 1) + List(*other, 8, 1), "bi");
    EXPECT_EQ(deleted, "lacdefghAjkm") << "its own items alone";
    other = nullptr;
    EXPECT_EQ(deleted, "lacdefghAjkmbi") << "the higher pool goes with the last one below it";
}

} // namespace
