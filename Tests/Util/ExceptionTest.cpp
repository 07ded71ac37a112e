#include <memory>

#include <gtest/gtest.h>

#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"

#include "QFException.h"

#include "Support/FailureCheck.h"

namespace {

using brindle_test::DescribeFailure;

// Clones the exception, throws the clone by its base class and answers what was caught.
template <class E>
E Thrown(const E& exception) {
    const std::unique_ptr<ZBLThrowable> clone(exception.clone());
    try {
        clone->hurl(ZBLFileLocation("Source/Somewhere", 12), "QE", "ZBL_THROW");
    } catch (const E& copy) {
        EXPECT_EQ(DescribeFailure(dynamic_cast<const E&>(*clone)), DescribeFailure(copy)) << "the place is in both";
        return copy;
    }
    return E(0L);
}

template <class E>
std::string ThrownAndExtended() {
    E original(0L);
    original = E(ZBLSeverity::warning, "one");
    original << QEMessage(2);
    return DescribeFailure(Thrown(original) << ZBLMessageString("three"));
}

TEST(Exceptions, ThrowACopyOfTheirOwnClass) {
    const std::string rest = " 0 [severity 2] [text]one 0x2() [text]three", place = " Source/Somewhere:12";
    EXPECT_EQ(ThrownAndExtended<QEException>(), "QEException" + rest + place);
    EXPECT_EQ(ThrownAndExtended<QEExceptionExtended>(), "QEExceptionExtended" + rest + " @-1" + place);
    EXPECT_EQ(ThrownAndExtended<QFException>(), "QFException" + rest + place);
    EXPECT_EQ(ThrownAndExtended<QSModelNotFound>(), "QSModelNotFound" + rest + place);
}

TEST(Exceptions, PositionsAndFragmentTravelWithEveryCopy) {
    QEExceptionExtended failure(0L), assigned(0L);
    failure.SetPosition(4), failure.SetToPosition(9), failure.SetIsMacro(1);
    assigned = Thrown(failure);
    EXPECT_TRUE(assigned.GetPosition() == 4 && assigned.GetToPosition() == 9 && assigned.GetIsMacro() == 1);

    QSModelNotFound notFound(3L);
    const auto document = ZBLIDOM_DOMImplementation::getInstance().createDocument("", "failure", {});
    notFound.SetDOM(document.getDocumentElement());
    EXPECT_EQ(Thrown(notFound).GetDOM(), document.getDocumentElement());
}

TEST(AddMessages, TheCountSaysHowManyStringsBecomeParameters) {
    QFException exception;
    for (const int count : {-3, 0, 1, 6, 7})
        QEAddMessages(exception, 1, count, "a", "b", "c", "d", "e", "f");
    QEAddMessages(exception, 0x2aL, 2, "%1");
    EXPECT_EQ(exception.getMessage(),
              "qemsgs 0x1\nqemsgs 0x1\nqemsgs 0x1 (\"a\")\nqemsgs 0x1 (\"a\", \"b\", \"c\", \"d\", \"e\", \"f\")\n"
              "qemsgs 0x1 (\"a\", \"b\", \"c\", \"d\", \"e\", \"f\")\nqemsgs 0x2a (\"%1\", \"\")");
}

// What is put in isn't read again; "%7" to "%16" stand for nothing, the rest is no place holder.
TEST(AddMessages, ATextOfOnesOwnTakesAllSixStrings) {
    QEException exception(1L);
    for (const char* text : {"", "%1%2%3 %4%5%6", "[%7%8%9%10%11%12%13%14%15%16]", "100%, %0, %17"})
        QEAddMessages(exception, text, 0, "%2", "b", "c", "d", "e", "f");
    EXPECT_EQ(exception.getMessage(), "\n%2bc def\n[]\n100%, %0, %27");
}

TEST(CreateException, EachFormMakesItsMessage) {
    ZBLMessageComponents own("own", 9);
    own << ZBLMessageParm("x");
    const I18NString a("a");
    I18NString shown;
    const auto make = [&shown](auto... parts) {
        const QFException made = QFException::CreateException(20, parts...);
        EXPECT_EQ(made.getCode(), 20);
        shown += made.getMessage() + ", ";
    };
    make(own), make("rqpmsgs", 1UL), make("mamsgs", 2UL, 18446744073709551615UL), make("mamsgs", 3UL, -5L);
    make("mamsgs", 4UL, a), make("mamsgs", 5UL, 0.5), make("mamsgs", 6UL, a, 0.25), make("mamsgs", 7UL, a, 0.25, "c");
    EXPECT_EQ(shown,
              "own 0x9 (\"x\"), rqpmsgs 0x1, mamsgs 0x2 (18446744073709551615), mamsgs 0x3 (-5), "
              "mamsgs 0x4 (\"a\"), mamsgs 0x5 (0.5), mamsgs 0x6 (\"a\", 0.25), mamsgs 0x7 (\"a\", 0.25, \"c\"), ");
}

} // namespace
