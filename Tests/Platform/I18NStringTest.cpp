// The string type against a model that keeps plain code points, and the rules that a model can't show: repair of
// ill-formed bytes, order, bounds.

#include <algorithm>
#include <chrono>
#include <iomanip>
#include <iterator>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "ZBLCore/I18NCodePoint.h"
#include "ZBLCore/I18NString.h"

namespace {

using index = I18NString::index;

static_assert(std::bidirectional_iterator<I18NStringIterator>);
static_assert(!std::is_constructible_v<I18NString, std::nullptr_t>);
static_assert(!std::is_convertible_v<std::string_view, I18NString> && !std::is_convertible_v<char32_t, I18NString>);
static_assert(std::is_nothrow_move_constructible_v<I18NString> && std::is_nothrow_move_assignable_v<I18NString>);

std::u32string codePointsOf(const I18NString& text) { return {text.begin(), text.end()}; }

I18NString textOf(const std::u32string& codePoints) {
    I18NString text;
    for (const char32_t codePoint : codePoints)
        text.append(codePoint);
    return text;
}

// What must hold for every string, after every operation.
void expectSound(const I18NString& text, const std::u32string& expected) {
    EXPECT_EQ(codePointsOf(text), expected) << text;
    EXPECT_EQ(text.size(), static_cast<index>(expected.size())) << text;
    EXPECT_EQ(I18NString(text.bytes()), text);
    EXPECT_EQ(text.c_str()[text.bytes().size()], '\0');
}

TEST(I18NStringRepair, EachMaximalSubpartBecomesOneReplacementCharacter) {
    const struct {
        const char* name;
        std::string bytes;
        std::u32string expected;
    } rows[] = {
        {"two bytes, first and last", "\xC2\x80\xDF\xBF", U"\u0080\u07FF"},
        {"three bytes, first and last", "\xE0\xA0\x80\xEF\xBF\xBF", U"\u0800\uFFFF"},
        {"around the surrogates", "\xED\x9F\xBF\xEE\x80\x80", U"\uD7FF\uE000"},
        {"four bytes, first and last", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", U"\U00010000\U0010FFFF"},
        {"zero byte", std::string("a\0b", 3), std::u32string(U"a\0b", 3)},
        {"continuation alone", "a\x80\xBFz", U"a\uFFFD\uFFFDz"},
        {"overlong of two", "\xC0\xAF\xC1\xBF", U"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"overlong of three", "\xE0\x9F\xBF", U"\uFFFD\uFFFD\uFFFD"},
        {"overlong of four", "\xF0\x8F\xBF\xBF", U"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"surrogate", "\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD"},
        {"above the last", "\xF4\x90\x80\x80", U"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"never a lead", "\xF5\xFE\xFF", U"\uFFFD\uFFFD\uFFFD"},
        {"lead at the end", "a\xC3", U"a\uFFFD"},
        {"two of three at the end", "\xE2\x82", U"\uFFFD"},
        {"three of four at the end", "\xF0\x9F\x98", U"\uFFFD"},
        {"two of three, then a letter", "\xE2\x82z", U"\uFFFDz"},
        {"three of four, then a lead", "\xF0\x9F\x98\xC3\xA4", U"\uFFFD\u00E4"},
        {"lead, then a lead", "\xE2\xE2\x82\xAC", U"\uFFFD\u20AC"},
    };
    for (const auto& row : rows)
        for (const std::size_t padding : {0u, 7u, 8u, 15u, 16u, 17u}) {
            SCOPED_TRACE(std::string(row.name) + " behind " + std::to_string(padding));
            std::vector<char> bytes(padding, 'x'); // with nothing behind its end
            bytes.insert(bytes.end(), row.bytes.begin(), row.bytes.end());
            bytes.shrink_to_fit();
            const std::u32string expected = std::u32string(padding, U'x') + row.expected;
            expectSound(I18NString(bytes.data(), bytes.size()), expected);
            I18NString appended("\u20AC");
            expectSound(appended.appendUtf8({bytes.data(), bytes.size()}), U"\u20AC" + expected);
        }
}

TEST(I18NStringRepair, AgreesWithAnotherDecoderOnRandomBytes) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    // Few values, so that leads and continuations often meet.
    const std::string alphabet = "az\x80\x8F\x90\x9F\xA0\xBF\xC2\xDF\xE0\xE2\xED\xEF\xF0\xF1\xF4\xF5";
    for (int round = 0; round < 3000; ++round) {
        std::string bytes(random() % 40, ' ');
        for (char& byte : bytes)
            byte = alphabet[random() % alphabet.size()];
        ASSERT_EQ(I18NString(bytes), I18NString(bytes.data(), bytes.size(), "ibm-1208"))
            << testing::PrintToString(bytes);
    }
}

TEST(I18NStringRepair, CodePointsThatAreNoneBecomeTheReplacementCharacter) {
    for (const I18NCodePoint none : {0xD800u, 0xDFFFu, 0x110000u, 0xFFFFFFFFu}) {
        expectSound(I18NString(none, 2), U"\uFFFD\uFFFD");
        expectSound(I18NString("a").append(none), U"a\uFFFD");
    }
    expectSound(I18NString(U'\U0001F600', 3), U"\U0001F600\U0001F600\U0001F600");
    expectSound(I18NString(U'x', -1), U"");
    expectSound(I18NString(static_cast<const char*>(nullptr)), U"");
}

// The model's reading of a position and of a count.
struct Range {
    std::size_t begin, count;
    Range(const std::u32string& text, index position, index length) {
        const auto size = static_cast<index>(text.size());
        const index first = std::clamp<index>(position, 0, size);
        begin = static_cast<std::size_t>(first);
        count = static_cast<std::size_t>(length == -1 ? size - first : std::clamp<index>(length, 0, size - first));
    }
};

index asAnswer(std::size_t hit) { return hit == std::u32string::npos ? -1 : static_cast<index>(hit); }

void expectSameAnswers(const I18NString& text, const std::u32string& model, index a, index b, const I18NString& other) {
    const Range range(model, a, b);
    expectSound(text.substr(a, b), model.substr(range.begin, range.count));
    const Range upToEnd(model, a, b == -1 ? -1 : std::max<index>(b, 0) - static_cast<index>(range.begin));
    const bool reversed = b != -1 && std::max<index>(b, 0) < static_cast<index>(range.begin);
    expectSound(text.substring(a, b), reversed ? U"" : model.substr(upToEnd.begin, upToEnd.count));
    EXPECT_EQ(text.at(a), a < 0 || a >= static_cast<index>(model.size()) ? 0 : model[static_cast<std::size_t>(a)]);
    EXPECT_EQ(text.byteOffsetOf(a), textOf(model.substr(0, range.begin)).bytes().size());
    EXPECT_EQ(text.positionOf(text.byteOffsetOf(a)), static_cast<index>(range.begin));
    const std::u32string sought = codePointsOf(other);
    EXPECT_EQ(text.find(other, a), sought.empty() ? -1 : asAnswer(model.find(sought, a < 0 ? 0 : range.begin)));
    EXPECT_EQ(text.rfind(other), sought.empty() ? -1 : asAnswer(model.rfind(sought)));
}

TEST(I18NStringModel, RandomOperationsAnswerAsPlainCodePointsDo) {
    const unsigned seed = std::random_device()();
    std::mt19937 random(seed);
    const std::u32string alphabets[] = {U"ab", U"a\u00E4", U"ab\u20AC\U0001F600"};
    for (int round = 0; round < 6000; ++round) {
        const std::u32string& alphabet = alphabets[random() % 3];
        const auto make = [&](std::size_t size) {
            std::u32string made(size, U' ');
            for (char32_t& codePoint : made)
                codePoint = alphabet[random() % alphabet.size()];
            return made;
        };
        std::u32string model = make(random() % 70);
        I18NString text = textOf(model);
        const auto position = [&] { return static_cast<index>(random() % (model.size() + 8)) - 4; };
        const index a = position(), b = position();
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round << ", at " << a << " and " << b);
        // Half of the pieces sought are of the text, long ones too.
        const I18NString other = random() % 2 ? text.substr(position(), random() % 30) : textOf(make(random() % 4));
        expectSameAnswers(text, model, a, b, other);

        // The string itself as argument must act like a copy of it.
        const bool itself = random() % 4 == 0;
        const std::u32string piece = itself ? model : codePointsOf(other);
        const I18NString& argument = itself ? text : other;
        const Range range(model, a, b);
        const auto operation = random() % 5;
        if (operation == 0) text.append(argument), model += piece;
        if (operation == 1) text.insert(a, argument), model.insert(range.begin, piece);
        if (operation == 2) text.appendUtf8(argument.bytes()), model += piece;
        if (operation == 3) text = "\u00E4" + text + argument, model = U"\u00E4" + model + piece;
        if (operation == 4) text.replace(a, b, argument), model.replace(range.begin, range.count, piece);
        expectSound(text, model);
        ASSERT_FALSE(HasFailure());
    }
}

TEST(I18NStringSearch, StaysLinearOnRunsOfOneLetter) {
    const I18NString text(U'a', 8'000'000);
    const I18NString almost = I18NString(U'a', 4'000'000) + "b";
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(text.find(almost), -1);
    EXPECT_EQ(text.rfind(almost), -1);
    EXPECT_EQ((text + almost).rfind(almost), 8'000'000);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST(I18NStringGrowth, TwoGibibytesAreRefusedAndLeaveTheStringAsItWas) {
    constexpr index kHalf = index{1} << 30;
    EXPECT_THROW(I18NString(U'x', 2 * kHalf), std::length_error);
    EXPECT_THROW(I18NString(U'\u20AC', 2 * kHalf / 3 + 1), std::length_error);
    I18NString text(U'x', kHalf);
    EXPECT_THROW(text.append(text), std::length_error);
    EXPECT_THROW(text.insert(5, text), std::length_error);
    EXPECT_THROW(text.replace(0, 0, text), std::length_error);
    EXPECT_THROW(text.appendUtf8(text.bytes()), std::length_error);
    EXPECT_THROW(text.reserve(I18NString::kMaxBytes + 1), std::length_error);
    EXPECT_THROW(text + text, std::length_error);
    EXPECT_EQ(text.size(), kHalf);
    EXPECT_EQ(text.replace(0, -1, text).size(), kHalf);
    EXPECT_EQ(text.replace(1, -1, text.substr(0, 2)).bytes(), "xxx");
}

TEST(I18NStringOrder, IsThatOfCodePoints) {
    const char* const ascending[] = {"",       "\1",      "A",       "AB",          "B",
                                     "a",      "a\u0301", "a\u20AC", "a\U00010000", "\u007F",
                                     "\u0080", "\u00E1",  "\uD7FF",  "\uFFFF",      "\U00010000"};
    for (std::size_t a = 0; a < std::size(ascending); ++a)
        for (std::size_t b = 0; b < std::size(ascending); ++b) {
            EXPECT_EQ(I18NString(ascending[a]) <=> I18NString(ascending[b]), a <=> b) << a << " and " << b;
            EXPECT_EQ(I18NString(ascending[a]) == I18NString(ascending[b]), a == b) << a << " and " << b;
        }
}

TEST(I18NStringOrder, ALiteralIsEqualExactlyIfItsStringIs) {
    const char* literals[] = {"", "a", "ab", "\u00E4", "\uFFFD", "\xFF", "\xC3", "\uFFFDx", "\xFFx"};
    for (const char* a : literals)
        for (const char* b : literals)
            EXPECT_EQ(I18NString(a) == b, I18NString(a) == I18NString(b)) << a << " and " << b;
    EXPECT_EQ(I18NString(), static_cast<const char*>(nullptr));
    EXPECT_NE(I18NString("a\0", 2), "a");
}

TEST(I18NStringIterators, StopAtBothEndsAndRunBackTheSameWay) {
    const I18NString text("a\u00E4\u20AC\U0001F600z");
    I18NStringIterator at = text.begin();
    EXPECT_EQ(*--at, U'a');
    std::u32string back;
    for (at = text.end(); text.begin() < at;)
        back += *--at;
    EXPECT_EQ(back, U"z\U0001F600\u20AC\u00E4a");
    at = text.end();
    EXPECT_EQ(*at, U'\0');
    EXPECT_EQ(at++, text.end());
    EXPECT_EQ(*at--, U'\0');
    EXPECT_EQ(at.base() - text.c_str(), 10);
    EXPECT_EQ(*I18NString().end()--, U'\0');
    EXPECT_EQ(*++I18NStringIterator(), U'\0');
}

TEST(I18NStringIterators, MakeTheTextBetweenThem) {
    const I18NString text("a\u00E4\u20ACz"), other("b\u00E4");
    expectSound(I18NString(++text.begin(), --text.end()), U"\u00E4\u20AC");
    expectSound(I18NString(text.end(), text.begin()), U"");
    expectSound(I18NString(text.begin(), other.end()), U"");
    expectSound(I18NString(other.begin(), text.end()), U"");
    expectSound(I18NString(I18NStringIterator(), I18NStringIterator()), U"");
}

TEST(I18NStringValue, AMoveLeavesTheSourceEmpty) {
    for (const char* form : {"\u00E4", "long enough to need memory of its own \u00E4"}) {
        I18NString source(form), assigned("something long that stands here before the move");
        const I18NString moved(std::move(source));
        expectSound(source, U"");
        EXPECT_EQ(moved, form);
        source = form;
        assigned = std::move(source);
        expectSound(source, U"");
        EXPECT_EQ(assigned, form);
        EXPECT_EQ(assigned.size(), moved.size());
    }
}

TEST(I18NStringValue, StreamsWriteTheBytesWithoutWidthOrFill) {
    std::ostringstream out;
    out << std::setfill('.') << std::setw(9) << I18NString("a\0\u00E4", 4) << 'b' << std::setw(2) << 'c';
    EXPECT_EQ(out.str(), std::string("a\0\u00E4b.c", 7));
}

TEST(I18NCodePointClasses, FollowTheGeneralCategoryAndWhiteSpace) {
    // l letter, n alphanumeric, s white space.
    const struct {
        I18NCodePoint codePoint;
        const char* classes;
    } rows[] = {
        {0, ""},       {8, ""},       {9, "s"},       {0xD, "s"},      {0xE, ""},      {0x1C, ""},       {' ', "s"},
        {'/', ""},     {'0', "n"},    {'9', "n"},     {':', ""},       {'@', ""},      {'A', "ln"},      {'Z', "ln"},
        {'[', ""},     {'_', ""},     {'`', ""},      {'a', "ln"},     {'z', "ln"},    {'{', ""},        {0x7F, ""},
        {0x80, ""},    {0x85, "s"},   {0xA0, "s"},    {0xAA, "ln"},    {0xB2, ""},     {0xD7, ""},       {0xE4, "ln"},
        {0x301, ""},   {0x660, "n"},  {0x1680, "s"},  {0x180E, ""},    {0x2000, "s"},  {0x200A, "s"},    {0x200B, ""},
        {0x2028, "s"}, {0x2029, "s"}, {0x202F, "s"},  {0x205F, "s"},   {0x2160, ""},   {0x3000, "s"},    {0x4E00, "ln"},
        {0xD800, ""},  {0xFEFF, ""},  {0x1D7CE, "n"}, {0x20000, "ln"}, {0x110000, ""}, {0xFFFFFFFF, ""},
    };
    for (const auto& row : rows) {
        std::string classes = I18NCodePointIsLetter(row.codePoint) ? "l" : "";
        classes += I18NCodePointIsAlphanumeric(row.codePoint) ? "n" : "";
        classes += I18NCodePointIsWhitespace(row.codePoint) ? "s" : "";
        EXPECT_EQ(classes, row.classes) << std::hex << static_cast<unsigned long>(row.codePoint);
    }
}

} // namespace
