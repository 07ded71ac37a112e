// A load that fails anywhere, the sort of its names, and what no file can give: a tree of any depth, and a parameter
// without a description.
#include <algorithm>
#include <numeric>
#include <random>

#include <gtest/gtest.h>

#include "QFFunctionLoader.h"
#include "QFFunctionLoaderOrder.h"
#include "QFFunctionParameter.h"

#include "Support/Catalogue.h"
#include "Support/FailInTurn.h"

namespace {

using namespace brindle_test;

TEST(FunctionLoader, FailsAnywhereAndLoadsTheNextTime) {
    TestCatalogue catalogue;
    catalogue.Fill("<group><id>a group with a long id</id><interface>all_olap</interface><vendor>v</vendor><function>"
                   "<id>f</id><dll>a library</dll><other>a text of some length</other><parameter type='t'/><qosLevel>"
                   "<rule><interface>or</interface></rule></qosLevel></function></group>",
                   {{"en-us", "<string id='f'>A name of some length</string><string id='f.tip'>A tip</string>"}});
    const auto load = [&catalogue] {
        const AQF_FunctionPool& pool = *AQF_FunctionPool::GetInstance();
        const Calm calm;
        EXPECT_EQ(*pool.root->kindCounts, (AQF_FunctionDescription::KindCounts{0, 1, 1}));
        EXPECT_EQ(pool.FindByName("a name OF some length").first->second, pool.FindById("f"));
        EXPECT_TRUE(pool.HasInterface("OR") && pool.HasInterface("LA") && pool.interfaces.size() == 11);
        AQF_DeletePool(), catalogue.TakeLog();
        return "loaded";
    };
    FailInTurn(allocationsLeft, "loaded", {"std: std::bad_alloc"}, load);
    const auto told = [&catalogue](const char* file) {
        return "ZBLIDOM_Exception -1 [text]" + catalogue.Folder() + file +
               ": not a readable file of at most 1073741824 bytes Platform/ZBLIDOM/ZBLIDOM_Parser:307[ZBLIDOM "
               "ZBL_THROW]";
    };
    FailInTurn(fileCallsLeft, "loaded", {told("/FileList.xml"), told("/functions.xml"), told("/en-us.xml")}, load);
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

TEST(FunctionDescription, ADeepTreeIsFreedWithoutRecursion) {
    std::unique_ptr<AQF_FunctionDescription> tree;
    for (int depth = 0; depth < 200'000; ++depth) {
        auto above = std::make_unique<AQF_FunctionDescription>(nullptr, FT_group, "id");
        above->children = std::make_unique<std::vector<std::unique_ptr<AQF_FunctionDescription>>>();
        if (tree) tree->parent = above.get(), above->children->push_back(std::move(tree));
        tree = std::move(above);
    }
    tree.reset();
}

TEST(FunctionParameter, WithoutADescriptionItIsOneValueOfNoType) {
    AQF_FunctionParameter parameter(nullptr);
    std::vector<I18NString> types;
    parameter.GetTypes(types);
    EXPECT_TRUE(types.empty() && parameter.GetType().empty() && parameter.GetIsNullable());
    EXPECT_TRUE(parameter.GetMinOccurs() == 1 && parameter.GetMaxOccurs() == 1 && !parameter.GetIsOptional());
}

} // namespace
