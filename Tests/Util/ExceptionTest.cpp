#include <memory>
#include <string>
#include <type_traits>
#include <typeinfo>

#include <gtest/gtest.h>

#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"

#include "QEException.h"
#include "QFException.h"

namespace {

// Without a catalogue text a message shows its file, number and parameters, texts in quotes.
template <class E>
void ThrowsACopyOfItsOwnClass(const char* name) {
    SCOPED_TRACE(name);
    E original(0L);
    original = E(ZBLSeverity::warning, "one");
    static_assert(std::is_same_v<decltype(original << QEMessage(2)), E&>);
    original << QEMessage(2);
    const std::unique_ptr<ZBLThrowable> clone(static_cast<ZBLThrowable&>(original).clone());
    bool caught = false;
    try {
        clone->hurl(ZBLFileLocation("Source/Somewhere", 12), "QE", "ZBL_THROW");
    } catch (ZBLException& exception) {
        caught = true;
        EXPECT_TRUE(typeid(exception) == typeid(E)) << typeid(exception).name();
        EXPECT_STREQ(exception.getThrowableName(), name);
        EXPECT_EQ(exception.getSeverity(), ZBLSeverity::warning);
        ASSERT_EQ(exception.getBackTrace().size(), 1U);
        const ZBLException::BackTraceEntry& place = exception.getBackTrace()[0];
        EXPECT_EQ(place.path + " " + std::to_string(place.line) + " " + place.component + " " + place.macroName,
                  "Source/Somewhere 12 QE ZBL_THROW");
        exception << ZBLMessageString("three");
        EXPECT_EQ(exception.getMessage(), "one\nqemsgs 0x2\nthree");
    }
    EXPECT_TRUE(caught);
    EXPECT_EQ(clone->getMessage(), "one\nqemsgs 0x2");
    EXPECT_EQ(dynamic_cast<const E&>(*clone).getBackTrace().size(), 1U) << "the place is noted in the object too";
    EXPECT_EQ(E(ZBLSeverity::warning, 7L).getCode(), 7);
    EXPECT_EQ(E("text").getSeverity(), ZBLSeverity::error);
    EXPECT_EQ(E(7L).getSeverity(), ZBLSeverity::error);
}

TEST(Exceptions, ThrowACopyOfTheirOwnClass) {
    ThrowsACopyOfItsOwnClass<QEException>("QEException");
    ThrowsACopyOfItsOwnClass<QEExceptionExtended>("QEExceptionExtended");
    ThrowsACopyOfItsOwnClass<QFException>("QFException");
    ThrowsACopyOfItsOwnClass<QSModelNotFound>("QSModelNotFound");
}

// Clones the exception, throws the clone by its base class and answers what was caught.
template <class E>
E Thrown(const E& exception) {
    E caught(0L);
    try {
        std::unique_ptr<ZBLException>(exception.clone())->hurl(ZBLFileLocation("p", 1), "QE", "ZBL_THROW");
    } catch (const E& copy) {
        caught = copy;
    }
    return caught;
}

TEST(Exceptions, PositionsAndFragmentTravelWithEveryCopy) {
    QEExceptionExtended failure(0L), assigned(0L);
    EXPECT_TRUE(failure.GetPosition() == -1 && failure.GetToPosition() == -1 && failure.GetIsMacro() == 0);
    failure.SetPosition(4);
    failure.SetToPosition(9);
    failure.SetIsMacro(1);
    assigned = Thrown(failure);
    EXPECT_TRUE(assigned.GetPosition() == 4 && assigned.GetToPosition() == 9 && assigned.GetIsMacro() == 1);

    QSModelNotFound notFound(3L);
    EXPECT_TRUE(notFound.GetDOM().isNull());
    const ZBLIDOM_Element element =
        ZBLIDOM_DOMImplementation::getInstance().createDocument("", "failure", {}).getDocumentElement();
    notFound.SetDOM(element);
    EXPECT_EQ(Thrown(notFound).GetDOM(), element);
}

TEST(AddMessages, TheCountSaysHowManyStringsBecomeParameters) {
    QFException exception;
    for (const int count : {-3, 0, 1, 2, 6, 7})
        QEAddMessages(exception, 1, count, "a", "b", "c", "d", "e", "f");
    QEAddMessages(exception, 0x2aL, 2, "%1");
    EXPECT_EQ(exception.getCode(), 0);
    EXPECT_EQ(exception.getMessage(),
              "qemsgs 0x1\nqemsgs 0x1\nqemsgs 0x1 (\"a\")\nqemsgs 0x1 (\"a\", \"b\")\n"
              "qemsgs 0x1 (\"a\", \"b\", \"c\", \"d\", \"e\", \"f\")\n"
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
    const struct {
        QFException made;
        const char* message;
    } rows[] = {
        {QFException::CreateException(20, own), "own 0x9 (\"x\")"},
        {QFException::CreateException(20, "rqpmsgs", 1), "rqpmsgs 0x1"},
        {QFException::CreateException(20, "mamsgs", 2, 18446744073709551615UL), "mamsgs 0x2 (18446744073709551615)"},
        {QFException::CreateException(20, "mamsgs", 3, -5L), "mamsgs 0x3 (-5)"},
        {QFException::CreateException(20, "mamsgs", 4, a), "mamsgs 0x4 (\"a\")"},
        {QFException::CreateException(20, "mamsgs", 5, 0.5), "mamsgs 0x5 (0.5)"},
        {QFException::CreateException(20, "mamsgs", 6, a, 0.25), "mamsgs 0x6 (\"a\", 0.25)"},
        {QFException::CreateException(20, "mamsgs", 7, a, 0.25, "c"), "mamsgs 0x7 (\"a\", 0.25, \"c\")"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.made.getMessage(), row.message);
        EXPECT_EQ(row.made.getCode(), 20) << row.message;
    }
}

} // namespace
