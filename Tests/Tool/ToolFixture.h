// What the tests of the program share: an empty working directory, and rows of calls with what has to come of them.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "Support/Directory.h"
#include "Support/Process.h"

struct ToolCase {
    std::vector<std::string> arguments;
    std::string input;
    ProcessResult expected;
};

struct ToolTest : testing::Test, brindle_test::Directory {
    static ProcessRequest Request(std::vector<std::string> arguments, std::string input = "") {
        arguments.insert(arguments.begin(), BRINDLE_TOOL_PROGRAM);
        return {.arguments = std::move(arguments), .input = std::move(input), .settings = {"BRINDLE_SETTINGS=/none"}};
    }

    static void MakeDatabase(const std::string& file, const std::string& statements) {
        sqlite3* database = nullptr;
        EXPECT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, statements.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(database);
        sqlite3_close(database);
    }

    static void Check(const std::vector<ToolCase>& cases) {
        for (const ToolCase& row : cases) {
            std::string line;
            for (const std::string& argument : row.arguments)
                line += "<" + argument + "> ";
            EXPECT_EQ(RunProcess(Request(row.arguments, row.input)), row.expected) << line << "\n"
                                                                                   << row.input.substr(0, 200);
        }
    }
};
