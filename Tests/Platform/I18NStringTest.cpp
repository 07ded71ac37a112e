// The string type against a model that keeps plain code points, and the rules that a model can't show: repair of
// ill-formed bytes, order, bounds.

#include <algorithm>
#include <ios>
#include <random>
#include <stdexcept>
#include <type_traits>

#include <gtest/gtest.h>

#include "ZBLCore/I18NCodePoint.h"
#include "ZBLCore/I18NString.h"

namespace {

using index = I18NString::index;
using namespace std::string_literals;

static_assert(!std::is_constructible_v<I18NString, std::nullptr_t>);
static_assert(!std::is_convertible_v<std::string_view, I18NString> && !std::is_convertible_v<char32_t, I18NString>);

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
    // Well-formed up to the edges of each form; ill-formed ones between letters; those that the end cuts.
    const std::pair<std::string, std::u32string> rows[] = {
        {"\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF\0\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"s,
         U"\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\0\U00010000\U0010FFFF"s},
        {"\x80\xBFz\xC0\xAFz\xC1\xBFz\xE0\x9F\xBFz\xED\xA0\x80z\xE2\x82z\xE2\xE2\x82\xAC",
         U"\uFFFD\uFFFDz\uFFFD\uFFFDz\uFFFD\uFFFDz\uFFFD\uFFFD\uFFFDz\uFFFD\uFFFD\uFFFDz\uFFFDz\uFFFD\u20AC"},
        {"\xF0\x8F\xBF\xBFz\xF4\x90\x80\x80z\xF5\0\xF5\x80\x80\xFE\xFFz\xF0\x9F\x98\xC3\xA4"s,
         U"\uFFFD\uFFFD\uFFFD\uFFFDz\uFFFD\uFFFD\uFFFD\uFFFDz\uFFFD\0\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDz\uFFFD\u00E4"s},
        {"a\xC3", U"a\uFFFD"},
        {"\xE2\x82", U"\uFFFD"},
        {"\xF0\x9F\x98", U"\uFFFD"}};
    for (const auto& row : rows)
        for (const std::size_t padding : {0u, 7u, 8u, 15u, 16u, 17u}) {
            const std::string text = std::string(padding, 'x') + row.first;
            const std::vector<char> bytes(text.begin(), text.end()); // with nothing behind its end
            const std::u32string expected = std::u32string(padding, U'x') + row.second;
            expectSound(I18NString(bytes.data(), bytes.size()), expected);
            expectSound(I18NString("\u20AC").appendUtf8({bytes.data(), bytes.size()}), U"\u20AC" + expected);
        }
    for (const I18NCodePoint none : {0xD800u, 0xDFFFu, 0x110000u, 0xFFFFFFFFu})
        expectSound(I18NString(none, 2).append(none), U"\uFFFD\uFFFD\uFFFD");
    expectSound(I18NString(U'x', -1) + I18NString(static_cast<const char*>(nullptr)), U"");
    expectSound("12345678\u00E412345678", U"12345678\u00E412345678");
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

void expectSameAnswers(const I18NString& text, const std::u32string& model, index a, index b, const I18NString& other) {
    const Range range(model, a, b);
    expectSound(text.substr(a, b), model.substr(range.begin, range.count));
    const std::size_t end = b == -1 ? model.size() : Range(model, b, 0).begin;
    expectSound(text.substring(a, b), end < range.begin ? U"" : model.substr(range.begin, end - range.begin));
    EXPECT_EQ(text.at(a), a < 0 || a >= static_cast<index>(model.size()) ? 0 : model[static_cast<std::size_t>(a)]);
    EXPECT_EQ(text.byteOffsetOf(a), textOf(model.substr(0, range.begin)).bytes().size());
    EXPECT_EQ(text.positionOf(text.byteOffsetOf(a)), static_cast<index>(range.begin));
    const std::u32string sought = codePointsOf(other);
    EXPECT_EQ(text.find(other, a),
              sought.empty() ? -1 : static_cast<index>(model.find(sought, a < 0 ? 0 : range.begin)));
    EXPECT_EQ(text.rfind(other), sought.empty() ? -1 : static_cast<index>(model.rfind(sought)));
}

TEST(I18NStringModel, RandomOperationsAnswerAsPlainCodePointsDo) {
    const unsigned seed = std::random_device()();
    std::mt19937 random(seed);
    const std::u32string alphabets[] = {U"ab", U"a\u00E4", U"ab\u0800\U0001F600"};
    for (int round = 0; round < 6000; ++round) {
        const auto make = [&random, &alphabet = alphabets[random() % 3]](std::size_t size) {
            std::u32string made(size, U' ');
            std::ranges::generate(made, [&] { return alphabet[random() % alphabet.size()]; });
            return made;
        };
        std::u32string model = make(random() % 70);
        I18NString text = textOf(model);
        const auto position = [&] { return static_cast<index>(random() % (model.size() + 8)) - 4; };
        const index a = position(), b = position();
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round << ", at " << a << " and " << b);
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

TEST(I18NStringGrowth, TwoGibibytesAreRefusedAndLeaveTheStringAsItWas) {
    constexpr index kHalf = index{1} << 30;
    EXPECT_THROW(I18NString(U'\u20AC', 2 * kHalf / 3 + 1), std::length_error);
    I18NString text(U'x', kHalf);
    EXPECT_THROW(text.replace(0, 0, text), std::length_error);
    EXPECT_THROW(text.appendUtf8(text.bytes()), std::length_error);
    EXPECT_EQ(text.replace(0, -1, text).size(), kHalf);
}

TEST(I18NStringOrder, IsThatOfCodePointsAndLiteralsCompareAsTheirStringsDo) {
    const char* const ascending[] = {"",        "\1",      "A",           "AB",     "a",
                                     "a\u0301", "a\u20AC", "a\U00010000", "\u007F", "\u0080",
                                     "\u00E1",  "\uFFFD",  "\uFFFDx",     "\uFFFF", "\U00010000"};
    for (const char* const& a : ascending) {
        for (const char* const& b : ascending)
            EXPECT_EQ(I18NString(a) <=> I18NString(b), &a <=> &b) << a << " and " << b;
        for (const char* b : {"", "a", "\u00E1", "\uFFFD", "\xFF", "\xC3", "\uFFFDx", "\xFFx"})
            EXPECT_EQ(I18NString(a) == b, I18NString(a) == I18NString(b)) << a << " and " << b;
    }
    EXPECT_NE(I18NString("a\0", 2), "a");
}

TEST(I18NStringIterators, StopAtBothEndsAndMakeTheTextBetweenThem) {
    const I18NString text("a\u00E4\u20AC\U0001F600z"), other("b\u00E4");
    I18NStringIterator at = text.begin();
    EXPECT_EQ(*--at, U'a');
    std::u32string back;
    for (at = text.end(); text.begin() < at;)
        back += *--at;
    EXPECT_EQ(back, U"z\U0001F600\u20AC\u00E4a");
    at = text.end();
    EXPECT_EQ(at++, text.end());
    EXPECT_EQ(*at--, U'\0');
    EXPECT_EQ(at.base() - text.c_str(), 10);
    expectSound(I18NString(++text.begin(), --text.end()), U"\u00E4\u20AC\U0001F600");
    expectSound(I18NString(text.begin(), other.end()), U"");
}

TEST(I18NStringValue, AMoveLeavesTheSourceEmpty) {
    for (const char* form : {"\u00E4", "long enough to need memory of its own \u00E4"}) {
        I18NString source(form), assigned("something long that stands here before the move");
        I18NString moved(std::move(source));
        assigned = std::move(moved);
        expectSound(source, U"");
        expectSound(moved, U"");
        expectSound(assigned, codePointsOf(form));
    }
}

TEST(I18NCodePointClasses, FollowTheGeneralCategoryAndWhiteSpace) {
    // l letter, n alphanumeric, s white space.
    const std::pair<const char*, std::u32string> rows[] = {
        {"ln", U"AZaz\u00AA\u00E4\u4E00\U00020000"},
        {"n", U"09\u0660\U0001D7CE"},
        {"s", U"\t\r \u0085\u00A0\u1680\u2000\u200A\u2028\u2029\u202F\u205F\u3000"},
        {"", U"\0\b\x0E\x1C/:@[_`{\x7F\u0080\u00B2\u00D7\u0301\u180E\u200B\u2160\xD800\uFEFF\x110000\xFFFFFFFF"s}};
    for (const auto& [expected, codePoints] : rows)
        for (const I18NCodePoint codePoint : codePoints) {
            std::string classes = I18NCodePointIsLetter(codePoint) ? "l" : "";
            classes += I18NCodePointIsAlphanumeric(codePoint) ? "n" : "";
            classes += I18NCodePointIsWhitespace(codePoint) ? "s" : "";
            EXPECT_EQ(classes, expected) << std::hex << static_cast<unsigned long>(codePoint);
        }
}

} // namespace
