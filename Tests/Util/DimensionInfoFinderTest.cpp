// Worked examples of the dimension finder. An input is "items; keys; groups", sets as digits: "123; 12; 1 123" has the
// items 1 to 3, the key {1,2} and the groups {1} and {1,2,3}. A structure is written from the top down, key items
// first, properties behind a stroke, "*" for unique: "1: 2[1] 1[2|3]".
#include "AQU_I_DimensionInfoFinder.h"

#include <memory>
#include <sstream>
#include <string>

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

std::string Digits(const Numbers& numbers) {
    std::string text;
    for (const unsigned number : numbers)
        text += std::to_string(number);
    return text;
}

std::string Structure(AQU_I_DimensionInfoFinder& finder) {
    std::string text;
    Numbers hierarchies, levels, keyItems, properties;
    finder.GetHierarchies(hierarchies);
    for (const unsigned hierarchy : hierarchies) {
        text += (text.empty() ? "" : "; ") + std::to_string(hierarchy) + ":";
        finder.GetLevels(hierarchy, levels);
        for (const unsigned level : levels) {
            bool unique = false;
            finder.GetLevelKeys(level, keyItems, unique);
            finder.GetLevelProperties(level, properties);
            text += " " + std::to_string(level) + (unique ? "*[" : "[") + Digits(keyItems);
            text += (properties.empty() ? "" : "|" + Digits(properties)) + "]";
        }
    }
    return text.empty() ? "none" : text;
}

// The first call's answer, and the second's behind a double stroke where it differs.
std::string Find(const std::string& input) {
    const auto finder = MakeFinder(input);
    const std::string first = Structure(*finder), second = Structure(*finder);
    return first == second ? first : first + " || " + second;
}

TEST(DimensionInfoFinder, InfersTheHierarchies) {
    brindle_test::CheckRows(
        Find, "123; ; -> none", "123; 1; ; -> none", "12; 1; 12 -> none",
        // A key climbs to the part that a group has.
        "123; 12; 1 123 -> 1: 2[1] 1[2|3]", "1234; 123; 1 12 1234 -> 1: 3[1] 2[2] 1[3|4]",
        // Attributes go to the level of the key that their group was split by; a key in no group is a group itself.
        "12345; 12; 125 13 14 -> 1: 2[1|34] 1[2|5]", "1234; ; 1324 4 43 14 -> 1: 3[4] 2[1] 1[23]; 2: 3[4] 4[3]",
        "1234; 12 4; 1 12 -> 1: 2[1] 1[2]; 2: 3*[4]",
        // Groups without a key: the one whose items occur most comes first, its parents lie in it whole.
        "1234; ; 12 23 34 -> 1: 1[23]; 2: 2[12]; 3: 3[34]",
        "12345678; ; 736 245 85672 251 5764 -> 1: 1[25678]; 2: 2[4567]; 3: 3[125]; 4: 4[245]; 5: 5[367]",
        "123456; ; 42315 4 4652 24 -> 1: 3[4] 2[2] 1[135]; 2: 3[4] 2[2] 4[56]",
        // The lone level of a key goes below those without a key; the second call lists it, too.
        "12345; 4; 12 1 45 -> 2: 3[1] 2[2] 1*[4|53] || 1: 1*[4|53]; 2: 3[1] 2[2] 1*[4|53]",
        // The one hierarchy takes the items that stand nowhere, two take none. A set with an unknown item is left out.
        "1239; 12 14; 1 123 18 321 11 ; -> 1: 2[1] 1[2|39]", "12349; 12 4; 1 12 4 -> 1: 2[1] 1[2]; 2: 3*[4]",
        // A key that an open group holds whole ends the analysis; what was found stands.
        "12345; 1 23; 4 23 123 -> none", "12345678; 456 23 1; 7 456 23 123 -> 1: 1*[456]");
}

TEST(DimensionInfoFinder, AnalysesOnceUnlessNothingWasFound) {
    const auto finder = MakeFinder("123; 12; 12");
    EXPECT_EQ(Structure(*finder), "none");
    finder->AddGroup({7});
    EXPECT_EQ(Structure(*finder), "none") << "no input has come";
    finder->AddGroup({1});
    EXPECT_EQ(Structure(*finder), "1: 2[1] 1[2|3]");
    finder->AddGroup({2, 3});
    EXPECT_EQ(Structure(*finder), "1: 2[1] 1[2|3]");
    Numbers out{9};
    bool unique = true;
    finder->GetLevels(99, out), finder->GetLevelKeys(99, out, unique), finder->GetLevelProperties(99, out);
    finder->GetHierarchies(out);
    EXPECT_TRUE(unique && out == (Numbers{9, 1})) << "unknown numbers change nothing, a known one is appended";
}

TEST(DimensionInfoFinder, DumpWritesTheStructure) {
    std::ostringstream text;
    const auto finder = MakeFinder("12345; 12 4; 1 123 45");
    finder->SetItemName(1, "\xC3\xA9");
    finder->Dump(nullptr, text);
    EXPECT_EQ(text.str(), "AQU_I_DimensionInfoFinder::Dump\nHierarchies:\n"
                          "H_1\n    L_2\n        Keys:\n            K_1->\xC3\xA9\n"
                          "    L_1\n        Keys:\n            K_2->item 2\n        Props:\n            3->item 3\n"
                          "H_2\n    L_3\n        Keys:Unique\n            K_4->item 4\n        Props:\n"
                          "            5->item 5\n");
}

} // namespace
