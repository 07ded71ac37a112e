// The boxes of a page as tables: each line "given  ->  expected" between "```box" and "```" is a row. Where nothing is
// expected, the line ends with the arrow.
#pragma once

#include <fstream>
#include <string>

#include <gtest/gtest.h>

namespace brindle_test {

template <class Function>
void CheckBox(const char* pageName, const std::string& box, Function function) {
    std::ifstream page(std::string(BRINDLE_TEST_SOURCE_DIR "/Docs/") + pageName);
    bool inBox = false;
    int count = 0;
    for (std::string line; std::getline(page, line);) {
        const std::string given = line.substr(0, line.find("  ->"));
        if (line.starts_with("```")) inBox = line == "```" + box;
        if (!inBox || given.size() == line.size()) continue;
        const std::string answer = function(given);
        EXPECT_EQ(given + "  ->" + (answer.empty() ? "" : "  ") + answer, line);
        ++count;
    }
    EXPECT_GE(count, 5) << box;
}

} // namespace brindle_test
