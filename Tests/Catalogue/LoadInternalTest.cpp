// A load that runs out of memory anywhere, and the parts of it that no file shows one by one.
#include <algorithm>
#include <new>
#include <numeric>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"
#include "ZBLIDOM/ZBLIDOM_Parser.h"
#include "ZBLIDOM/ZBLIDOM_View.h"

#include "QFFunctionLoader.h"
#include "QFFunctionLoaderOrder.h"

#include "Support/Catalogue.h"
#include "Support/FailingHeap.h"

namespace {

TEST(FunctionLoader, RunsOutOfMemoryAnywhereAndLoadsTheNextTime) {
    brindle_test::TestCatalogue catalogue;
    catalogue.Fill("<group><id>a group with a long id</id><interface>all_rel</interface><vendor>v</vendor><function>"
                   "<id>f</id><dll>a library</dll><other>a text of some length</other><parameter type='t'/><qosLevel>"
                   "<rule><default/><value>ok</value></rule><rule/></qosLevel></function></group>",
                   {{"en-us", "<string id='f'>A name of some length</string><string id='f.tip'>A tip</string>"}});
    bool hasLoaded = false;
    for (long allocations = 0; !hasLoaded; ++allocations) {
        // Another thread each time: a guard that wasn't given back would hold it up.
        std::thread([&] {
            brindle_test::allocationsLeft = allocations;
            try {
                hasLoaded = AQF_FunctionPool::GetInstance() != nullptr;
            } catch (const std::bad_alloc&) {
            }
            brindle_test::allocationsLeft = -1;
        }).join();
        ASSERT_LT(allocations, 20'000);
    }
    const AQF_FunctionPool& pool = *AQF_FunctionPool::GetInstance();
    ASSERT_TRUE(pool.FindById("f") && pool.root->kindCounts);
    EXPECT_EQ(*pool.root->kindCounts, (AQF_FunctionDescription::KindCounts{0, 1, 1}));
    EXPECT_EQ(pool.FindByName("a name OF some length").first->second, pool.FindById("f"));
    AQF_DeletePool();
}

TEST(FunctionLoader, OrdersTextsByTheirBytesAndEqualOnesAsTheyCame) {
    std::minstd_rand random(20'261);
    for (const std::size_t count : {0U, 1U, 2U, 255U, 256U, 257U, 5000U}) {
        std::vector<std::string> texts(count);
        for (std::string& text : texts) {
            text.assign(8 * (random() % 3), 'x');
            for (auto more = random() % 5; more > 0; --more)
                text += std::string("\0a\xC3\xFF", 4)[random() % 4];
        }
        std::vector<std::uint32_t> expected(count);
        std::iota(expected.begin(), expected.end(), 0U);
        std::stable_sort(expected.begin(), expected.end(), [&](auto a, auto b) { return texts[a] < texts[b]; });
        AQF_TextOrder order;
        for (const std::string& text : texts)
            order.Add(text);
        EXPECT_EQ(order.Sort(), expected) << count;
    }
}

TEST(DocumentView, GoesThroughADocumentThatIsReadAgainInTheSameMemory) {
    ZBLIDOM_Document document =
        ZBLIDOM_DOMImplementation::getInstance().createDocument("", "TT", ZBLIDOM_DocumentType());
    const std::string large(100'000, 'x');
    for (int round = 0; round < 3; ++round) {
        ZBLIDOM_Parser(0).parseText("<a k='v'><b>1<![CDATA[2]]></b>t<c>" + large + "<d/></c></a>", document);
        std::string seen;
        for (ZBLIDOM_View node(document); node; node = node.getNextInOrder())
            seen += node.getNodeType() == ZBLIDOM_ELEMENT_NODE ? node.getTagName() : node.getNodeValue().substr(0, 2);
        EXPECT_EQ(seen, "ab12tcxxd");
        const ZBLIDOM_View top = ZBLIDOM_View(document).getFirstElement();
        EXPECT_EQ(top.getAttribute("k").substr(0, 9), "v");
        EXPECT_EQ(top.getFirstElement().getNextElement().getTagName(), "c");
        EXPECT_FALSE(top.getNextElement() || ZBLIDOM_View().getFirstChild() || ZBLIDOM_View().getNextInOrder());
    }
    const ZBLIDOM_Node kept = document.getDocumentElement().getFirstChild();
    ZBLIDOM_Parser(0).parseText("<e/>", document);
    EXPECT_EQ(ZBLIDOM_View(kept).getTagName(), "b") << "what a handle refers to isn't written over";
}

} // namespace
