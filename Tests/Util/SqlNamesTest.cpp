#include <cstdlib>
#include <iostream>
#include <random>

#include <gtest/gtest.h>

#include "PlatformHooks.h"

#include "AQE_SqlNames.h"

namespace {

using Strings = std::vector<I18NString>;
using Rule = I18NString (*)(const I18NString&);

void Check(Rule rule, const std::vector<std::pair<const char*, const char*>>& pairs) {
    for (const auto& [name, expected] : pairs)
        EXPECT_EQ(rule(name), expected) << name;
}

void ForceQuotes(const char* option) { brindle_platform::overrideOption("Transformations", "DoubleQuotes", option); }

TEST(SqlNames, AreSpelledAndQuotedByRule) {
    ForceQuotes("0");
    Check(AQE_MakeValidSqlIdentifier, {{"", ""}, {"1a", "C_1a"}, {" a", "C__a"}, {"_a", "C__a"}, {"a-b 2", "a_b_2"}});
    Check(AQE_MakeValidSqlIdentifier, {{"\u00e9\u20ac\u00e9", "\u00e9_\u00e9"}, {"\u0663x", "C_\u0663x"}});
    Check(AQE_RemoveDoubleQuotes, {{"", ""}, {"\"", "\""}, {"\"\"", ""}, {"\"\"\"", "\""}, {"\"a\"\"b\"", "a\"b"}});
    Check(AQE_RemoveDoubleQuotes, {{"a\"\"b", "a\"b"}, {"\"a", "\"a"}, {"a\"", "a\""}, {"\"\u00e9\"", "\u00e9"}});
    Check(AQE_MakePhysicalSqlName, {{"", ""}, {"\"\"", ""}, {"\"abc\"", "abc"}, {"\u00e9_1", "\u00e9_1"}});
    Check(AQE_MakePhysicalSqlName, {{"\"Select\"", "\"Select\""}, {"xavg", "\"xavg\""}, {"a b", "\"a b\""}});
    Check(AQE_MakePhysicalSqlName, {{"1a", "\"1a\""}, {"_a", "\"_a\""}, {"a\"b", "\"a\"\"b\""}});
    EXPECT_EQ(AQE_ConvertNamepartToLiteral("it's"), "it''s");
    EXPECT_EQ(AQE_ReplaceGroupQueryObject("g", "o]", "h", "p", "[g].[o]].[i] + [g].[o].[i] + [g].[o]]"),
              "[h].[p].[i] + [g].[o].[i] + [h].[p]");
}

TEST(SqlNames, QuotedNamesReadBack) {
    ForceQuotes("0");
    const char* const pieces[] = {"\"", "]", "[", ".", "'", "a", "\u00e9", " ", "1", "\U0001F600"};
    std::mt19937 random(4711);
    for (int round = 0; round < 3000; ++round) {
        Strings parts(3), readBack;
        for (I18NString& part : parts)
            for (auto length = random() % 6; length > 0; --length)
                part += pieces[random() % std::size(pieces)];
        const I18NString object = AQE_MakeObjectName(parts[0], parts[1], parts[2]);
        EXPECT_TRUE(AQE_ExtractNamePartsFromString(object, readBack) && readBack == parts) << object;
        EXPECT_EQ(AQE_ConvertNamepartToString(parts), object);
        const I18NString physical = AQE_MakePhysicalSqlName(parts[0]);
        EXPECT_EQ(AQE_RemoveDoubleQuotes(physical), AQE_RemoveDoubleQuotes(parts[0])) << physical;
    }
}

TEST(SqlNames, ObjectNamesAreTakenApart) {
    const Rule split = [](const I18NString& text) {
        Strings parts{"kept"};
        I18NString shown = AQE_ExtractNamePartsFromString(text, parts) ? "whole" : "broken";
        for (const I18NString& part : parts)
            shown += " (" + part + ")";
        return shown;
    };
    Check(split, {{"", "whole (kept) ()"}, {"[a].", "whole (kept) (a) ()"}, {".[a]", "whole (kept) () (a)"}});
    Check(split, {{"a", "broken (kept)"}, {"]", "broken (kept)"}, {"[a]].[b]", "whole (kept) (a].[b)"}});
    Check(split, {{"[a", "broken (kept) (a)"}, {"[a]]", "broken (kept) (a])"}, {"[a] .", "broken (kept) (a)"}});
}

TEST(SqlNamesDeathTest, ForcedQuotesHoldForTheLifeOfTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // in a process that has not read the setting yet
    const auto print = [] {
        for (const char* option : {"-1", "0"})
            ForceQuotes(option), std::cerr << AQE_MakePhysicalSqlName("") << AQE_MakePhysicalSqlName("abc");
        std::_Exit(0);
    };
    EXPECT_EXIT(print(), testing::ExitedWithCode(0), "^\"abc\"\"abc\"$");
}

} // namespace
