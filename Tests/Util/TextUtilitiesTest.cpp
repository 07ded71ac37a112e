#include <random>

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
        AQE_SearchAndReplace(texts[0], texts[1], texts[2], out);
        EXPECT_EQ(std::exchange(out, before), replaced) << row;
    }
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

// The text trimmed in each of the modes 0 to 3 and in 7, a bar behind each.
I18NString Trimmed(const I18NString& text) {
    I18NString shown;
    for (const int mode : {0, 1, 2, 3, 7}) {
        I18NString trimmed = text;
        AQE_Trim(trimmed, mode);
        shown += trimmed + "|";
    }
    return shown;
}

TEST(Trim, RemovesTheSidesOfItsMode) {
    Check(Trimmed, {{"", "|||||"}, {" ", " || || |"}, {"\u2003\n ", "\u2003\n ||\u2003||\u2003\n |"}});
    Check(Trimmed, {{"\u3000e\u00a0", "\u3000e\u00a0|e\u00a0|\u3000e|e|\u3000e\u00a0|"}});
}

TEST(SubstituteText, ReplacesNumberedMarkersOnce) {
    const auto substituted = [](const I18NString& source) {
        I18NString out = source;
        AQE_SubstituteText(out, "\u20ac", "%1", "c");
        return out;
    };
    Check(substituted, {{"", ""}, {"50%", "50%"}, {"%0%5%a%%", "%0%5%a%%"}, {"%3%2%1", "c%1\u20ac"}, {"%32", "c2"}});
    Check(substituted, {{"%%2%2%", "%%1%1%"}, {"%4%3", "%4c"}, {"\u00e9%3\u00e9%\u00e9", "\u00e9c\u00e9%\u00e9"}});
    I18NString text = "%4%3%2%1";
    AQE_SubstituteText(text, text, "b");
    EXPECT_EQ(text, "%4%3b%4%3%2%1");
    AQE_SubstituteText(text = "%4%3%2%1", "a", "b", "c", "d");
    EXPECT_EQ(text, "dcba");
    AQE_SubstituteText(text = "%5%4", std::vector<I18NString>{"a", "b", "c", "d", "e"});
    EXPECT_EQ(text, "%5d");
}

TEST(IsMacro, LooksAtTheOutermostCharacters) {
    EXPECT_TRUE(AQE_IsMacro("##") && AQE_IsMacro("\u3000#\u00e9# #\u2003\n"));
    for (const char* text : {"", " ", "#", " # ", "#a", "a#", "#a#b", "x #a# ", "\u00e9#", "#\u00e9", "#\u3000\u00a0"})
        EXPECT_FALSE(AQE_IsMacro(text)) << text;
}

} // namespace
