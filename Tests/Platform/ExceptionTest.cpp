// What a thrown exception still is and holds where it is caught, and how its copies stay independent.
#include <memory>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "ZBLCFGAPI/ZBLConfigurationException.h"
#include "ZBLCore/ZBLAssertError.h"
#include "ZBLIDOM/ZBLIDOM_Exception.h"

namespace {

std::string traceOf(const ZBLException& exception) {
    std::string text;
    for (const ZBLException::BackTraceEntry& entry : exception.getBackTrace())
        text += entry.path + ":" + std::to_string(entry.line) + ":" + entry.component + ":" + entry.macroName + ";";
    return text;
}

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
            EXPECT_STREQ(std::unique_ptr<ZBLException>(caught.clone())->getThrowableName(), "ZBLAssertError");
            EXPECT_EQ(caught.getMessage(), "ZBL_ASSERT(x);");
            EXPECT_EQ(traceOf(caught), traceOf(original));
            caught.addBackTrace(ZBLFileLocation(nullptr, 3), nullptr, nullptr);
            EXPECT_TRUE(traceOf(caught).ends_with(";:3::;")) << traceOf(caught);
        }
    }
    EXPECT_EQ(traceOf(original), "Source/Place:1:QE:ZBL_THROW;Source/Place:2:QE:ZBL_THROW;");
}

TEST(Exception, TheLayersClassesThrowCopiesOfThemselvesToo) {
    const auto thrown = [](ZBLException& original) -> std::string {
        const std::unique_ptr<ZBLException> clone(original.clone());
        try {
            clone->hurl(ZBLFileLocation("Source/Place", 1), "QE", "ZBL_THROW");
        } catch (const ZBLException& caught) {
            const auto* const reader = dynamic_cast<const ZBLIDOM_Exception*>(&caught);
            return std::string(caught.getThrowableName()) + " " + caught.getMessage().c_str() + " " + traceOf(caught) +
                   (reader ? reader->getPath().c_str() + std::to_string(reader->getLine()) : "");
        }
        return "nothing";
    };
    ZBLIDOM_Exception reader("bad", "file", 3);
    EXPECT_EQ(thrown(reader << ZBLMessageString("more")),
              "ZBLIDOM_Exception file:3:0: bad\nmore Source/Place:1:QE:ZBL_THROW;file3");
    ZBLConfigurationException service("bad");
    EXPECT_EQ(thrown(service << ZBLMessageString("more")),
              "ZBLConfigurationException bad\nmore Source/Place:1:QE:ZBL_THROW;");
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
    EXPECT_EQ(first.getMessage(), "shared\na");
    EXPECT_EQ(second.getMessage(), "shared\nb");
    EXPECT_EQ(third.getMessage(), "shared");
    EXPECT_EQ(traceOf(third) + traceOf(first) + traceOf(second), "p:1:c:m;");
}

// Copies share what is behind them until they write; the thread sanitizer watches.
TEST(Exception, CopiesOnSeveralThreads) {
    auto original = std::make_unique<ZBLException>("shared");
    std::thread other([copy = ZBLException(*original)]() mutable {
        EXPECT_EQ((copy << ZBLMessageString("mine")).getMessage(), "shared\nmine");
    });
    *original << ZBLMessageString("alone");
    original.reset();
    other.join();
}

} // namespace
