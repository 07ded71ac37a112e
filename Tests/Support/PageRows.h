// The boxes of a page as tables: each line "given  ->  expected" between "```box" and "```" is a row. Where nothing is
// expected, the line ends with the arrow.
#pragma once

#include <fstream>
#include <string>

#include <gtest/gtest.h>

namespace brindle_test {

// Whether the line is a row; then the function's answer to what is given must be what is expected.
bool CheckRow(const std::string& line, auto function) {
    const std::string given = line.substr(0, line.find("  ->"));
    if (given.size() == line.size()) return false;
    const std::string answer = function(given);
    EXPECT_EQ(given + "  ->" + (answer.empty() ? "" : "  ") + answer, line);
    return true;
}

template <class Function>
void CheckBox(const char* pageName, const std::string& box, Function function) {
    std::ifstream page(std::string(BRINDLE_TEST_SOURCE_DIR "/Docs/") + pageName);
    bool inBox = false;
    int count = 0;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("```")) inBox = line == "```" + box;
        if (inBox && CheckRow(line, function)) ++count;
    }
    EXPECT_GE(count, 5) << box;
}

} // namespace brindle_test
