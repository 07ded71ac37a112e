// The examples of the pages are taken out of them and run. In Docs/macros.md a box "```macro" has lines "$name = text",
// "@name = one | two", "$map{key} = text" and then "text  ->  result", where a result can be "failure: ..." with its
// message. On every page indented lines that begin with "$ " are what is typed into a shell, in a directory that the
// page calls /srv, and a box "```xml FILE" is the content of a file there.
#include <sstream>

#include "ZBLCore/ZBLException.h"

#include "AQM_I_MacroExpander.h"

#include "Support/Parameters.h"
#include "Tool/ToolFixture.h"

namespace {

using brindle_test::Parameters;

std::istringstream Page(const std::string& name) {
    std::ifstream page(BRINDLE_TEST_SOURCE_DIR "/" + name);
    return std::istringstream(std::string(std::istreambuf_iterator<char>(page), {}) + "\n\n");
}

std::string Outcome(const std::string& text, const Parameters& parameters) {
    try {
        return std::string(AQM_I_MacroExpander().Expand(text.c_str(), parameters.Get()).bytes());
    } catch (const ZBLException& failure) {
        return "failure: " + std::string(failure.getMessage().bytes());
    }
}

void SetParameter(Parameters& parameters, const std::string& line) {
    const std::size_t equals = line.find(" = ");
    const bool isList = line.front() == '@';
    ASSERT_TRUE(equals != line.npos && (isList || line.front() == '$')) << line;
    for (std::size_t at = equals + 3, end = 0; end != line.npos; at = end + 3) {
        end = isList ? line.find(" | ", at) : line.npos;
        parameters.Set(line.substr(1, equals - 1), line.substr(at, end - at).c_str());
    }
}

TEST_F(ToolTest, EveryExampleOfTheLanguageComesOutAsItSays) {
    const std::string arrow = "  ->";
    int count = 0;
    std::istringstream page = Page("Docs/macros.md");
    std::unique_ptr<Parameters> parameters; // inside of a box
    for (std::string line; std::getline(page, line);) {
        const std::string text = line.substr(0, line.find(arrow));
        if (line.starts_with("```")) {
            parameters = line == "```macro" ? std::make_unique<Parameters>() : nullptr;
        } else if (parameters && text.size() < line.size()) {
            const std::string outcome = Outcome(text, *parameters);
            EXPECT_EQ(line, text + arrow + (outcome.empty() ? "" : "  ") + outcome);
            ++count;
        } else if (parameters && !line.empty()) {
            SetParameter(*parameters, line);
        }
    }
    EXPECT_GE(count, 46);
}

TEST_F(ToolTest, EveryDialogueComesOutAsItSays) {
    const std::string setUp =
        "exec 2>&1; export BRINDLE_SETTINGS=/none; PATH=$(dirname " BRINDLE_TOOL_PROGRAM "):$PATH; ";
    const std::string here = std::filesystem::current_path();
    for (const auto& [name, expectedCount] :
         {std::pair("Docs/macros.md", 3), std::pair("README.md", 2), std::pair("Docs/configuration.md", 3),
          std::pair("Docs/catalogue.md", 4), std::pair("Docs/values.md", 3), std::pair("Docs/csv.md", 5),
          std::pair("Docs/dimensions.md", 4)}) {
        int count = 0;
        std::string command, answer, file;
        std::istringstream page = Page(name);
        for (std::string line = "-"; page; line.clear(), std::getline(page, line)) {
            const bool begins = line.starts_with("    $ ");
            if (!command.empty() && (begins || !line.starts_with("    "))) {
                std::string actual = RunProcess({.arguments = {"/bin/bash", "-c", setUp + command}}).output;
                for (std::size_t at = 0; (at = actual.find(here, at)) != actual.npos;)
                    actual.replace(at, here.size(), "/srv");
                EXPECT_EQ(actual + (actual.ends_with('\n') ? "" : "\n"), answer) << name << ": " << command;
                command.clear(), answer.clear(), ++count;
            }
            if (line.starts_with("```")) {
                file = line.starts_with("```xml ") ? line.substr(7) : "";
                if (!file.empty()) std::filesystem::create_directories(std::filesystem::path(file).parent_path());
            } else if (!file.empty()) {
                std::ofstream(file, std::ios::app) << line << "\n";
            } else if (begins) {
                command = line.substr(6);
            } else if (command.ends_with('|')) {
                command += line;
            } else if (!command.empty()) {
                answer += line.substr(4) + "\n";
            }
        }
        EXPECT_GE(count, expectedCount) << name;
    }
}

} // namespace
