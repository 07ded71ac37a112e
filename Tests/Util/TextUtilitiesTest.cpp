// The small text routines, in particular where characters of several bytes and pathological texts meet them.
#include <random>
#include <utility>

#include <gtest/gtest.h>

#include "AQE_TextUtilities.h"

namespace {

void Check(I18NString (*rule)(const I18NString&), const std::vector<std::pair<const char*, const char*>>& pairs) {
    for (const auto& [text, expected] : pairs)
        EXPECT_EQ(rule(text), expected) << "from '" << text << "'";
}

// "source|search|replacement" replaced; the result goes into each of the three in turn, too.
I18NString Replaced(const I18NString& row) {
    const I18NString::index bar = row.find("|"), second = row.find("|", bar + 1);
    I18NString texts[] = {row.substring(0, bar), row.substring(bar + 1, second), row.substring(second + 1)};
    const I18NString replaced = AQE_SearchAndReplace(texts[0], texts[1], texts[2]);
    for (I18NString& out : texts) {
        const I18NString before = out;
        EXPECT_EQ(&AQE_SearchAndReplace(texts[0], texts[1], texts[2], out), &out);
        EXPECT_EQ(std::exchange(out, before), replaced) << row;
    }
    EXPECT_EQ(replaced.size(), I18NString(replaced.bytes()).size());
    return replaced;
}

TEST(SearchAndReplace, ReplacesFromTheLeftWithoutOverlap) {
    Check(Replaced, {{"|a|b", ""}, {"abc|abcd|y", "abc"}, {"abc||z", "abc"}, {"||z", ""}, {"xabx|x|", "ab"}});
    Check(Replaced, {{"aaa|aa|b", "ba"}, {"aaaa|aa|a", "aa"}, {"\u20ac,\u00e9,|,|\u00fc", "\u20ac\u00fc\u00e9\u00fc"}});
}

// Pieces of periodic texts of two letters: matches break off late and begin again inside the part already matched.
TEST(SearchAndReplace, AgreesWithAPlainSearchOnRepetitiveTexts) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        std::mt19937 random(seed);
        const std::size_t period = 1 + random() % 12;
        std::string text;
        for (std::size_t i = 0; i < 600; ++i)
            text += i < period || random() % 60 == 0 ? "ab"[random() % 2] : text[i - period];
        const std::string search = text.substr(random() % 400, 30 + random() % 40);
        std::string expected = text;
        for (std::size_t at = expected.find(search); at != std::string::npos; at = expected.find(search, at + 1))
            expected.replace(at, search.size(), "-");
        EXPECT_EQ(AQE_SearchAndReplace(text.c_str(), search.c_str(), "-"), expected.c_str()) << "seed " << seed;
    }
}

// With quadratic work these texts would take hours.
TEST(TextUtilities, TakeLinearTime) {
    constexpr int kCount = 2'000'000;
    I18NString text, replaced;
    for (int i = 0; i < kCount; ++i) {
        text += "\u00e9%1";
        replaced += "\u00e9\u20ac";
    }
    EXPECT_TRUE(AQE_SearchAndReplace(text, "%1", "\u20ac") == replaced);
    AQE_SubstituteText(text, "\u20ac");
    EXPECT_TRUE(text == replaced);
    const I18NString alike(U'a', kCount), half(U'a', kCount / 2), blanks(U'\u3000', kCount);
    EXPECT_TRUE(AQE_SearchAndReplace(alike, half + "b", "x") == alike);
    I18NString macro = blanks + "#a#" + blanks;
    EXPECT_TRUE(AQE_IsMacro(macro));
    AQE_Trim(macro, 3);
    EXPECT_EQ(macro, "#a#");
}

template <int mode>
I18NString Trimmed(const I18NString& text) {
    I18NString trimmed = text;
    AQE_Trim(trimmed, mode);
    return trimmed;
}

I18NString Substituted(const I18NString& text) {
    I18NString substituted = text;
    AQE_SubstituteText(substituted, "\u20ac", "%1", "c");
    return substituted;
}

TEST(Trim, RemovesTheSidesOfItsMode) {
    Check(Trimmed<1>, {{"", ""}, {" a b\t", "a b\t"}, {"\u2003\n ", ""}, {"\u3000\u00e9\u00a0", "\u00e9\u00a0"}});
    Check(Trimmed<2>,
          {{"", ""}, {" ", " "}, {" a b\t", " a b"}, {"\u2003\n ", "\u2003"}, {"\u00e9\u00a0\u3000", "\u00e9"}});
    Check(Trimmed<3>, {{"", ""}, {" a b\t", "a b"}, {"\u2003\n ", ""}, {"\u3000\u00e9\u00a0", "\u00e9"}});
    for (const auto trimmed : {Trimmed<-1>, Trimmed<0>, Trimmed<4>, Trimmed<7>})
        Check(trimmed, {{" a b\t", " a b\t"}});
}

TEST(SubstituteText, ReplacesNumberedMarkersOnce) {
    Check(Substituted, {{"", ""}, {"50%", "50%"}, {"%0%5%a%%", "%0%5%a%%"}, {"%3%2%1", "c%1\u20ac"}, {"%32", "c2"}});
    Check(Substituted, {{"%%2%2%", "%%1%1%"}, {"%4%3", "%4c"}, {"\u00e9%3\u00e9%\u00e9", "\u00e9c\u00e9%\u00e9"}});
    I18NString text = "%4%3%2%1";
    AQE_SubstituteText(text, text, "b");
    EXPECT_EQ(text, "%4%3b%4%3%2%1");
    AQE_SubstituteText(text, "a", "b", "c", "d");
    EXPECT_EQ(text, "dcbdcba");
    AQE_SubstituteText(text = "%5%4", std::vector<I18NString>(5, "x"));
    EXPECT_EQ(text, "%5x");
}

TEST(IsMacro, LooksAtTheOutermostCharacters) {
    for (const char* text : {"##", "  #a#  ", "\u3000#\u00e9#\u2003\n", "# #", "#a# and #b#"})
        EXPECT_TRUE(AQE_IsMacro(text)) << text;
    for (const char* text : {"", " ", "#", " # ", "#a", "a#", "#a#b", "x #a# ", "\u00e9#", "#\u00e9", "#\u3000\u00a0"})
        EXPECT_FALSE(AQE_IsMacro(text)) << text;
}

TEST(StrToLower, LowersBytesUpToTheTerminator) {
    char text[] = "A[Z.\xC3\x89\0B";
    EXPECT_EQ(AQE_StrToLower(text), text);
    EXPECT_EQ(std::string(text, 8), std::string("a[z.\xC3\x89\0B", 8));
}

} // namespace
