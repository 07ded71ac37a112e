// A load that runs out of memory anywhere, and the sort of its names.
#include <algorithm>
#include <new>
#include <numeric>
#include <random>
#include <thread>

#include <gtest/gtest.h>

#include "QFFunctionLoader.h"
#include "QFFunctionLoaderOrder.h"

#include "Support/Catalogue.h"
#include "Support/FailingHeap.h"

namespace {

TEST(FunctionLoader, RunsOutOfMemoryAnywhereAndLoadsTheNextTime) {
    brindle_test::TestCatalogue catalogue;
    catalogue.Fill("<group><id>a group with a long id</id><interface>all_olap</interface><vendor>v</vendor><function>"
                   "<id>f</id><dll>a library</dll><other>a text of some length</other><parameter type='t'/><qosLevel>"
                   "<rule><interface>or</interface></rule></qosLevel></function></group>",
                   {{"en-us", "<string id='f'>A name of some length</string><string id='f.tip'>A tip</string>"}});
    bool hasLoaded = false;
    for (long allocations = 0; !hasLoaded && allocations < 20'000; ++allocations)
        // Another thread each time: a guard that wasn't given back would hold it up.
        std::thread([&] {
            brindle_test::allocationsLeft = allocations;
            try {
                hasLoaded = AQF_FunctionPool::GetInstance() != nullptr;
            } catch (const std::bad_alloc&) {
            }
            brindle_test::allocationsLeft = -1;
        }).join();
    const AQF_FunctionPool& pool = *AQF_FunctionPool::GetInstance();
    ASSERT_TRUE(hasLoaded && pool.FindById("f") && pool.root->kindCounts);
    EXPECT_EQ(*pool.root->kindCounts, (AQF_FunctionDescription::KindCounts{0, 1, 1}));
    EXPECT_EQ(pool.FindByName("a name OF some length").first->second, pool.FindById("f"));
    EXPECT_TRUE(pool.HasInterface("OR") && pool.HasInterface("LA") && pool.interfaces.size() == 11);
    AQF_DeletePool();
}

TEST(FunctionLoader, OrdersTextsByTheirBytesAndEqualOnesAsTheyCame) {
    std::minstd_rand random(20'261);
    for (const std::size_t count : {0U, 1U, 256U, 257U, 5000U}) {
        std::vector<std::string> texts(count);
        AQF_TextOrder order;
        for (std::string& text : texts) {
            text.assign(8 * (random() % 3), 'x');
            for (auto more = random() % 5; more > 0; --more)
                text += std::string("\0a\xC3\xFF", 4)[random() % 4];
            order.Add(text);
        }
        std::vector<std::uint32_t> expected(count);
        std::iota(expected.begin(), expected.end(), 0U);
        std::stable_sort(expected.begin(), expected.end(), [&](auto a, auto b) { return texts[a] < texts[b]; });
        EXPECT_EQ(order.Sort(), expected) << count;
    }
}

} // namespace
