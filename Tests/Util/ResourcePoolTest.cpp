#include <gtest/gtest.h>

#include "AQU_ResourcePool.h"

namespace {

std::string deleted; // names of items, as they went

struct Item : AQU_ResourceItem {
    explicit Item(char name) : m_name(name) {}
    ~Item() override { deleted += m_name; }
    char m_name;
};

// The names of the type's items.
std::string List(AQU_ResourcePool& pool, long type) {
    std::string names;
    for (long i = -1; i < 5; ++i)
        if (const auto* const item = static_cast<const Item*>(pool.GetResourceItem(type, i))) names += item->m_name;
    return names;
}

TEST(ResourcePool, ItemsAreListedByTypeAndDeletedOnce) {
    deleted.clear();
    {
        AQU_ResourcePool pool;
        const auto add = [&](long type, char name) { return pool.AddResourceItem(type, new Item(name)); };
        EXPECT_TRUE(add(12, 'a') == 0 && add(0, 'b') == 0 && add(8, 'c') == 0 && add(8, 'd') == 1 && add(8, 'e') == 2);
        EXPECT_EQ(pool.AddResourceItem(8, nullptr), 3);
        pool.RemoveResourceItem(8, pool.GetResourceItem(12, 0)); // of another type
        EXPECT_EQ(List(pool, 8) + deleted, "cde");
        pool.RemoveResourceItem(8, pool.GetResourceItem(8, 0)), pool.RemoveResourceItem(8, nullptr);
        EXPECT_EQ(List(pool, 8) + List(pool, 1) + std::to_string(pool.AddResourceItem(8, nullptr)) + deleted, "de2c");
        for (const long type : {13L, -1L, 1L << 40}) {
            EXPECT_TRUE(pool.AddResourceItem(type, nullptr) == -1 && List(pool, type).empty()) << type;
            pool.RemoveResourceItem(type, pool.GetResourceItem(8, 0));
        }
        EXPECT_TRUE(pool.GetNewResourceType() == 13 && pool.GetNewResourceType() == 14 && add(14, 'f') == 0);
    }
    EXPECT_EQ(deleted, "cbdeaf") << "by type, then by index";
}

TEST(ResourcePool, SharedTypesLiveOnePoolUp) {
    deleted.clear();
    ZBLSmartPointer<AQU_ResourcePool> low(new AQU_ResourcePool), top(new AQU_ResourcePool), other(new AQU_ResourcePool);
    auto* const middle = new AQU_ResourcePool;
    low->AddResourceItem(8, new Item('A')); // isn't reached from then on
    low->SetHigherLevelPool(middle), middle->SetHigherLevelPool(top), other->SetHigherLevelPool(middle);
    for (long type = 0; type < 13; ++type)
        EXPECT_EQ(low->AddResourceItem(type, new Item(static_cast<char>('a' + type))), 0);
    EXPECT_EQ(List(*low, 1) + List(*low, 2) + List(*low, 8), "bci");
    middle->SetHigherLevelPool(nullptr);
    EXPECT_EQ(List(*middle, 1) + List(*middle, 2) + List(*middle, 8), "bi") << "and not two pools up";
    EXPECT_EQ(top->getReferenceCount(), 1);
    low->RemoveResourceItem(11, low->GetResourceItem(11, 0));
    low = nullptr;
    EXPECT_EQ(List(*other, 1) + List(*other, 8) + deleted, "bilacdefghAjkm") << "only its own items went";
    other = nullptr;
    EXPECT_EQ(deleted, "lacdefghAjkmbi") << "the higher pool goes with the last one below it";
}

} // namespace
