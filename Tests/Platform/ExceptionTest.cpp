// What a thrown exception still is and holds where it is caught, and how its copies stay independent.
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "ZBLCFGAPI/ZBLConfigurationException.h"
#include "ZBLCore/ZBLAssertError.h"
#include "ZBLIDOM/ZBLIDOM_Exception.h"

#include "Support/FailureCheck.h"

namespace {

using namespace brindle_test;

TEST(Exception, MessageForPeople) {
    ZBLException several(12L);
    several << ZBLMessageString("") << ZBLMessageString("first") << ZBLMessageString("l\u00E4st");
    EXPECT_EQ(several.getMessage(), "\nfirst\nl\u00E4st");
    EXPECT_EQ(ZBLException(-0x7FFFFFFFFFFFFFFFL - 1).getMessage(), "ZBLException -9223372036854775808");
}

TEST(Exception, HurlThrowsACopyOfTheOwnClassAndLeavesTheObject) {
    ZBLAssertError original(4L, "ZBL_ASSERT(x);");
    for (int round = 1; round <= 2; ++round) {
        try {
            static_cast<ZBLThrowable&>(original).hurl(ZBLFileLocation("Source/Place", round), "QE", "ZBL_THROW");
        } catch (ZBLException& caught) {
            EXPECT_EQ(DescribeFailure(caught), DescribeFailure(original));
            caught.addBackTrace(ZBLFileLocation(nullptr, 3), nullptr, nullptr);
            EXPECT_TRUE(DescribeFailure(caught).ends_with(" :3[ ]")) << DescribeFailure(caught);
        }
    }
    EXPECT_EQ(DescribeFailure(original), "ZBLAssertError 4 [text]ZBL_ASSERT(x); Source/Place:1 Source/Place:2");
}

TEST(Exception, TheLayersClassesThrowCopiesOfThemselvesToo) {
    const auto thrown = [](ZBLException& original) {
        original << ZBLMessageString("more");
        const std::unique_ptr<ZBLException> clone(original.clone());
        return FailureOf([&clone] { clone->hurl(ZBLFileLocation("Source/Place", 1), "QE", "ZBL_THROW"); });
    };
    ZBLIDOM_Exception reader("bad", "file", 3);
    EXPECT_EQ(thrown(reader), "ZBLIDOM_Exception -1 [text]file:3:0: bad [text]more Source/Place:1");
    ZBLConfigurationException service("bad");
    EXPECT_EQ(thrown(service), "ZBLConfigurationException 0 [text]bad [text]more Source/Place:1");
}

TEST(Exception, CopiesDontSeeEachOthersChanges) {
    ZBLException first(1L);
    first << ZBLMessageString("shared");
    ZBLException second(first);
    ZBLException third("dropped");
    third = static_cast<const ZBLException&>(third);
    EXPECT_EQ(third.getMessage(), "dropped");
    third = second;
    first << ZBLMessageString("a");
    second << ZBLMessageString("b");
    third.addBackTrace(ZBLFileLocation("p", 1), "c", "m");
    EXPECT_EQ(DescribeFailure(first), "ZBLException 1 [text]shared [text]a");
    EXPECT_EQ(DescribeFailure(second), "ZBLException 1 [text]shared [text]b");
    EXPECT_EQ(DescribeFailure(third), "ZBLException 1 [text]shared p:1[c m]");
}

// Copies share what is behind them until they write; the thread sanitizer watches.
TEST(Exception, CopiesOnSeveralThreads) {
    auto original = std::make_unique<ZBLException>("shared");
    const std::jthread other([copy = ZBLException(*original)]() mutable {
        EXPECT_EQ((copy << ZBLMessageString("mine")).getMessage(), "shared\nmine");
    });
    *original << ZBLMessageString("alone");
    original.reset();
}

} // namespace
