// Worked examples of the dimension finder. An input is "items; keys; groups", sets as digits: "123; 12; 1 123" has the
// items 1 to 3, the key {1,2} and the groups {1} and {1,2,3}. A structure is written from the top down, key items
// first, properties behind a stroke, "*" for unique: "H1 L2=1 L1=2|3".
#include "AQU_I_DimensionInfoFinder.h"

#include <memory>
#include <regex>
#include <sstream>

#include <gtest/gtest.h>

#include "Support/Rows.h"

namespace {

using Numbers = std::vector<unsigned>;

std::unique_ptr<AQU_I_DimensionInfoFinder> MakeFinder(const std::string& input) {
    std::unique_ptr<AQU_I_DimensionInfoFinder> finder(AQU_I_DimensionInfoFinder::Create());
    std::istringstream words(input);
    int part = 0;
    for (std::string word; words >> word; part += word.back() == ';') {
        Numbers items;
        for (const char digit : word.substr(0, word.find(';'))) {
            items.push_back(static_cast<unsigned>(digit - '0'));
            if (part == 0) finder->SetItemName(items.back(), ("item " + std::string(1, digit)).c_str());
        }
        if (part == 1) finder->AddKey(items);
        if (part == 2) finder->AddGroup(items);
    }
    return finder;
}

// What Dump writes, without names and blanks.
std::string Structure(AQU_I_DimensionInfoFinder& finder) {
    std::ostringstream dump;
    finder.Dump(nullptr, dump);
    std::string text = std::regex_replace(dump.str(), std::regex("^.*Dump\nHierarchies:\n|->.*|K_|_|\\s"), "");
    for (const auto& [what, with] : {std::pair("Keys:Unique", "*="), {"Keys:", "="}, {"Props:", "|"}, {"L", " L"}})
        text = std::regex_replace(text, std::regex(what), with);
    return text.empty() ? "none" : std::regex_replace(text, std::regex("(.)H"), "$1 H");
}

// The first call's answer, and the second's where it differs.
std::string Find(const std::string& input) {
    const auto finder = MakeFinder(input);
    const std::string first = Structure(*finder), second = Structure(*finder);
    return first == second ? first : first + " || " + second;
}

TEST(DimensionInfoFinder, InfersTheHierarchies) {
    brindle_test::CheckRows(
        Find, "123; ; -> none", "123; 1; ; -> none", "12; 1; 12 -> none",
        // A key climbs to the part that a group has.
        "123; 12; 1 123 -> H1 L2=1 L1=2|3", "1234; 123; 1 12 1234 -> H1 L3=1 L2=2 L1=3|4",
        // Attributes go to the level of the key that their group was split by; a key in no group is a group itself.
        "12345; 12; 125 13 14 -> H1 L2=1|34 L1=2|5", "1234; ; 1324 4 43 14 -> H1 L3=4 L2=1 L1=23 H2 L3=4 L4=3",
        // Groups without a key: the one whose items occur most comes first, its parents lie in it whole.
        "12345678; ; 736 245 85672 251 5764 -> H1 L1=25678 H2 L2=4567 H3 L3=125 H4 L4=245 H5 L5=367",
        // The lone level of a key goes below those without a key; the second call lists it, too.
        "12345; 4; 12 1 45 -> H2 L3=1 L2=2 L1*=4|53 || H1 L1*=4|53 H2 L3=1 L2=2 L1*=4|53",
        "123; 2 1; 3 -> H2 L2*=2 H3 L3=3 L1*=1 || H1 L1*=1 H2 L2*=2 H3 L3=3 L1*=1",
        "123; 1 13 23; 2 -> H1 L2=3|1 L1=2 H3 L4=2 L3*=1 || H1 L2=3|1 L1=2 H2 L3*=1 H3 L4=2 L3*=1",
        // A parent has more items than the group.
        "123; ; 12 123 23 13 3 2 -> H1 L3=2 L2=1 L1=3 H2 L5=3 L4=1 H3 L3=2 L6=3",
        // The one hierarchy takes the items that stand nowhere, two take none. A set with an unknown item is left out.
        "1239; 12 14; 1 123 18 321 11 ; -> H1 L2=1 L1=2|39", "12349; 12 4; 1 12 4 -> H1 L2=1 L1=2 H2 L3*=4",
        // A key that an open group holds whole ends the analysis; what was found stands.
        "12345; 1 23; 4 23 123 -> none", "12345678; 456 23 1; 7 456 23 123 -> H1 L1*=456");
}

TEST(DimensionInfoFinder, AnalysesOnceUnlessNothingWasFound) {
    const auto finder = MakeFinder("123; 12; 12");
    EXPECT_EQ(Structure(*finder), "none");
    finder->AddGroup({7});
    EXPECT_EQ(Structure(*finder), "none") << "no input has come";
    for (const unsigned item : {1u, 3u}) {
        finder->AddGroup({item});
        EXPECT_EQ(Structure(*finder), "H1 L2=1 L1=2|3");
    }
    Numbers out{9};
    bool unique = true;
    finder->GetLevels(99, out), finder->GetLevelKeys(99, out, unique), finder->GetLevelProperties(99, out);
    finder->GetHierarchies(out);
    EXPECT_TRUE(unique && out == (Numbers{9, 1})) << "unknown numbers change nothing, a known one is appended";
}

} // namespace
