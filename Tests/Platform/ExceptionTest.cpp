// What a thrown exception still is and holds where it is caught, and that its copies are independent of each other.
#include <memory>
#include <new>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "ZBLCore/ZBLAssertError.h"

namespace {

static_assert(std::is_nothrow_copy_constructible_v<ZBLException> && std::is_nothrow_copy_assignable_v<ZBLException>);
static_assert(std::is_nothrow_copy_constructible_v<ZBLAssertError>);

struct UncopyableMessage : ZBLMessageBase {
    UncopyableMessage* clone() const override { throw std::bad_alloc(); }
    I18NString format(const I18NLocale&) const override { return "never added"; }
};

std::string traceOf(const ZBLException& exception) {
    std::string text;
    for (const ZBLException::BackTraceEntry& entry : exception.getBackTrace()) {
        text += entry.path + ":" + std::to_string(entry.line) + ":" + entry.component + ":" + entry.macroName + ";";
    }
    return text;
}

TEST(Exception, MessageForPeople) {
    ZBLException several(12L);
    several << ZBLMessageString("") << ZBLMessageString("first") << ZBLMessageString("l\xC3\xA4st");
    const std::pair<ZBLException, std::string> rows[] = {
        {ZBLException(-0x7FFFFFFFFFFFFFFFL - 1), "ZBLException -9223372036854775808"},
        {ZBLException("it broke"), "it broke"},
        {ZBLException(static_cast<const char*>(nullptr)), ""},
        {several, "\nfirst\nl\xC3\xA4st"},
    };
    for (const auto& [exception, message] : rows)
        EXPECT_EQ(exception.getMessage().bytes(), message);
}

TEST(Exception, HurlThrowsACopyOfTheOwnClassAndLeavesTheObject) {
    ZBLAssertError original(4L, "ZBL_ASSERT(x);");
    for (int round = 1; round <= 2; ++round) {
        try {
            static_cast<ZBLThrowable&>(original).hurl(ZBLFileLocation("Source/Place", round), "QE", "ZBL_THROW");
        } catch (ZBLException& caught) {
            EXPECT_NE(&caught, &original);
            EXPECT_STREQ(caught.getThrowableName(), "ZBLAssertError");
            EXPECT_STREQ(std::unique_ptr<ZBLException>(caught.clone())->getThrowableName(), "ZBLAssertError");
            EXPECT_EQ(caught.getCode(), 4);
            EXPECT_EQ(caught.getMessage(), "ZBL_ASSERT(x);");
            EXPECT_EQ(traceOf(caught), traceOf(original));
            caught.addBackTrace(ZBLFileLocation(nullptr, 3), nullptr, nullptr);
            EXPECT_TRUE(traceOf(caught).ends_with(";:3::;")) << traceOf(caught);
        }
    }
    EXPECT_EQ(traceOf(original), "Source/Place:1:QE:ZBL_THROW;Source/Place:2:QE:ZBL_THROW;");
    EXPECT_THROW(ZBL_THROW(ZBLAssertError("x"), "Source/Place", 1, "QE"), ZBLAssertError);
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
    EXPECT_EQ(third.getCode(), 1);
    EXPECT_EQ(traceOf(third) + traceOf(first) + traceOf(second), "p:1:c:m;");
}

TEST(Exception, MessageThatCannotBeAddedLeavesTheException) {
    ZBLException exception(3L);
    EXPECT_THROW(exception << UncopyableMessage(), std::bad_alloc);
    EXPECT_EQ(exception.getMessage(), "ZBLException 3");
    const ZBLException copy((exception << ZBLMessageString("kept")));
    EXPECT_THROW(exception << UncopyableMessage(), std::bad_alloc);
    EXPECT_EQ(exception.getMessage(), "kept");
    EXPECT_THROW(exception.getMessageSet()[1], ZBLAssertError);
}

// Threads that each hold a copy share what is behind it until they write; the thread sanitizer watches.
TEST(Exception, CopiesOnSeveralThreads) {
    auto original = std::make_unique<ZBLException>("shared");
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([copy = ZBLException(*original)] {
            for (int round = 0; round < 200; ++round) {
                ZBLException own(copy);
                ASSERT_EQ((own << ZBLMessageString("mine")).getMessage(), "shared\nmine");
            }
        });
    }
    *original << ZBLMessageString("alone");
    original.reset();
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace
