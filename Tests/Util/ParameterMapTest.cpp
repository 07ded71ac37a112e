#include <sstream>

#include <gtest/gtest.h>

#include "PlatformHooks.h"

#include "AQU_ParameterMapApp.h"

namespace {

using Strings = std::vector<I18NString>;
using Entries = std::vector<std::pair<I18NString, I18NString>>;

TEST(ParameterMapApp, ForeignMapNameIsRefusedAndChangesNothing) {
    AQU_ParameterMapApp map("mine", 7);
    Strings values{"before"};
    Entries entries;
    map.SetDefault("mine", "a"), map.SetDefault("mine", "b"), map.GetMapNames(values);
    map.SetDefault("other", "d");
    map.Set("mine", "k", "v");
    // Without a map name the question goes to "_env", which this map does not serve either.
    std::ostringstream results;
    results << map.Get("other", "k", values) << map.GetDefault("other", values) << map.GetAllEntries("other", entries)
            << map.Get("other", "k", values[0]) << map.GetDefault("other", values[0]) << map.Set("other", "k", "x")
            << map.Delete("other", "k") << map.Set("k", "x") << map.Delete("k");
    EXPECT_EQ(results.str(), "-2-2-2-2-2-2-2-2-2");
    EXPECT_EQ(map.GetDefault("mine", values) + map.GetAllEntries("mine", entries), 2);
    EXPECT_EQ(values, (Strings{"before", "mine", "a", "b"}));
    EXPECT_TRUE(map.GetDefault("mine", values[0]) == 1 && values[0] == "b") << "of several the last";
    EXPECT_EQ(entries, (Entries{{"k", "v"}}));
}

TEST(ParameterMapApp, OptionReadAtEachSetDecidesWhetherEarlierValuesStay) {
    AQU_ParameterMapApp map("_env", 0);
    // The last of the values, then all of them, after one more.
    const auto valuesAfter = [&map](const char* option, const char* added) {
        brindle_platform::overrideOption("General Options", "MultiValuesAllowed", option);
        Strings values{""};
        EXPECT_EQ(map.Set("k", added) + map.Get("k", values[0]) + map.Get("k", values), 3);
        return values;
    };
    for (const char* key : {"l", "j"})
        map.Set(key, "neighbour");
    EXPECT_EQ(valuesAfter("0", "a"), (Strings{"a", "a"}));
    EXPECT_EQ(valuesAfter("1", "c"), (Strings{"c", "a", "c"}));
    EXPECT_EQ(valuesAfter("0", "b"), (Strings{"b", "b"}));
    EXPECT_EQ(valuesAfter("1", "a"), (Strings{"a", "b", "a"}));
    EXPECT_EQ(valuesAfter("-1", "c"), (Strings{"c", "b", "a", "c"}));
    Entries entries{{"kept", ""}};
    EXPECT_EQ(map.GetAllEntries("_env", entries), 1);
    EXPECT_EQ(entries,
              (Entries{{"kept", ""}, {"j", "neighbour"}, {"k", "b"}, {"k", "a"}, {"k", "c"}, {"l", "neighbour"}}));
    EXPECT_EQ(map.Delete("k"), 1);
    EXPECT_TRUE(map.Delete("k") == -1 && map.Get("k", entries[0].first) == -1);
    EXPECT_TRUE(entries[0].first == "kept" && map.GetDefault("_env", entries[0].first) == 1);
    EXPECT_EQ(entries[0].first, "") << "no default";
    Strings none;
    EXPECT_TRUE(map.GetDefault("_env", none) == 1 && none.empty());
}

} // namespace
