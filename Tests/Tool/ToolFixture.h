// What the tests of the program share: an empty working directory, and rows of calls with what has to come of them.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Support/Process.h"

struct ToolCase {
    std::vector<std::string> arguments;
    std::string input;
    ProcessResult expected;
};

class ToolTest : public testing::Test {
protected:
    ToolTest() : m_directory(testing::TempDir() + "brindle-" + std::string(6, 'X')) {
        if (mkdtemp(m_directory.data()) == nullptr) throw std::runtime_error("no directory");
        std::filesystem::current_path(m_directory);
    }
    ~ToolTest() override {
        std::filesystem::current_path("/");
        std::filesystem::remove_all(m_directory);
    }

    static ProcessRequest Request(std::vector<std::string> arguments, std::string input = "") {
        arguments.insert(arguments.begin(), BRINDLE_TOOL_PROGRAM);
        return {.arguments = std::move(arguments), .input = std::move(input), .settings = {"BRINDLE_SETTINGS=/none"}};
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

    static void Write(const std::string& file, const std::string& content) { std::ofstream(file) << content; }
    static std::string Read(const std::string& file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

private:
    std::string m_directory;
};
