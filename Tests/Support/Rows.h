// Tables of short rows, each one text "given -> expected":
//
//     CheckRows(Trimmed, "a -> a", " b  -> b");
#pragma once

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace brindle_test {

// What stands before the first arrow goes into the function; its answer must be what follows.
template <class Function, class... Rows>
void CheckRows(Function function, const Rows&... rows) {
    constexpr std::string_view arrow = " -> ";
    for (const std::string_view row : {std::string_view(rows)...}) {
        const std::size_t at = row.find(arrow);
        ASSERT_NE(at, row.npos) << row;
        EXPECT_EQ(function(std::string(row.substr(0, at))), row.substr(at + arrow.size())) << "for " << row;
    }
}

} // namespace brindle_test
