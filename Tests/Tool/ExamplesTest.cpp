// Every query of Examples/sales expands to the text beside it, and its blocks with their values rebuild that text.
#include <nlohmann/json.hpp>

#include "Tool/ToolFixture.h"

namespace {

TEST_F(ToolTest, ExampleQueriesExpandToTheTextsBesideThem) {
    std::filesystem::current_path(BRINDLE_TEST_SOURCE_DIR "/Examples/sales");
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(".")) {
        if (entry.path().extension() != ".json") continue;
        ++count;
        const std::string stem = entry.path().stem().string();
        const std::string text = Read(stem + ".sql"), expected = Read(stem + ".expected.sql");
        EXPECT_NE(expected, text) << stem;
        Check({{{"check", stem + ".sql"}, "", {0, "", ""}},
               {{"expand", stem + ".sql", "--params", stem + ".json"}, "", {0, expected, ""}}});

        const auto blocks = RunProcess(Request({"blocks", "--values", "--json", "--params", stem + ".json"}, text));
        std::string rebuilt;
        std::size_t copied = 0;
        for (const auto& block : nlohmann::json::parse(blocks.output)) {
            const auto start = block["start"].get<std::size_t>();
            rebuilt += text.substr(copied, start - copied) + block["value"].get<std::string>();
            copied = block["end"].get<std::size_t>() + 1;
        }
        EXPECT_EQ(rebuilt + text.substr(copied), expected) << stem;
    }
    EXPECT_GE(count, 7);
}

} // namespace
