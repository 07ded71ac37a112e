// Every box of every page is run or compared, and one that nothing checks fails. Behind "```" may stand
//
//     macro      parameters "$name = text", "@name = one | two", "$map{key} = text", then rows "text  ->  result"
//     usage      calls of the tool or a script, whose options its help must have
//     KIND FILE  a part of the tree's FILE but for the indentation, "..." for lines left out; what is in Examples/ and
//                Tests/ is compiled and run. A FILE that begins with a small letter is made, for the dialogues.
//     KIND       what another test reads
//
// Indented boxes are dialogues: "$ " and what is typed into a shell, in a directory that the page calls /srv, then what
// comes of it. In the text around, calls have known options, and names and files in backticks and links exist.
#include <regex>
#include <sstream>

#include "ZBLCore/ZBLException.h"

#include "AQM_I_MacroExpander.h"

#include "Support/PageRows.h"
#include "Support/Parameters.h"
#include "Tool/ToolFixture.h"

namespace {

using brindle_test::Parameters;
namespace fs = std::filesystem;

const fs::path kTree = BRINDLE_TEST_SOURCE_DIR;
const std::string kSetUp = "exec 2>&1; export BRINDLE_SETTINGS=/none; PATH=$(dirname " BRINDLE_TOOL_PROGRAM "):$PATH; ";

struct Box {
    std::string kind, file, text;
};

std::vector<Box> ReadBoxes(std::istream& page) {
    std::vector<Box> boxes(1, {"around", "", ""});
    bool isFenced = false;
    for (std::string line, before; std::getline(page, line); before = line) {
        const bool isIndented = !isFenced && line.starts_with("    ") && (before.empty() || boxes.back().kind.empty());
        if (line.starts_with("```")) {
            const std::string kind = isFenced ? "around" : line.substr(3, line.find(' ') - 3);
            boxes.push_back({kind, line.find(' ') < line.npos ? line.substr(line.find(' ') + 1) : "", ""});
            isFenced = !isFenced;
            continue;
        }
        if (!isFenced && isIndented == (boxes.back().kind == "around"))
            boxes.push_back({isIndented ? "" : "around", "", ""});
        boxes.back().text += line.substr(isIndented ? 4 : 0) + "\n";
    }
    return boxes;
}

std::string RunShell(const std::string& command) {
    return RunProcess({.arguments = {"/bin/bash", "-c", kSetUp + command}}).output;
}

std::vector<std::string> Find(const std::string& text, const std::string& pattern) {
    const std::regex expression(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
        found.push_back((*match)[1]);
    return found;
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

void CheckMacros(const std::string& box) {
    Parameters parameters;
    const auto outcome = [&parameters](const std::string& text) {
        try {
            return std::string(AQM_I_MacroExpander().Expand(text.c_str(), parameters.Get()).bytes());
        } catch (const ZBLException& failure) {
            return "failure: " + std::string(failure.getMessage().bytes());
        }
    };
    std::istringstream lines(box);
    for (std::string line; std::getline(lines, line);)
        if (!brindle_test::CheckRow(line, outcome) && !line.empty()) SetParameter(parameters, line);
}

void CheckDialogue(const std::string& box) {
    ASSERT_TRUE(box.starts_with("$ ")) << "a box that nothing checks";
    const std::string here = fs::current_path();
    std::string command, answer;
    std::istringstream lines(box + "$ \n");
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("$ ") && !command.empty()) {
            std::string actual = std::regex_replace(RunShell(command), std::regex(here), "/srv");
            actual = std::regex_replace(actual, std::regex("[0-9]{8}T[0-9]{6}Z"), "20240401T120000Z");
            EXPECT_EQ(actual + (actual.empty() || actual.ends_with('\n') ? "" : "\n"), answer) << command;
            answer.clear();
        }
        if (line.starts_with("$ "))
            command = line.substr(2);
        else
            (command.ends_with('|') ? command : answer) += line + (command.ends_with('|') ? "" : "\n");
    }
}

std::string WithoutIndentation(const std::string& text) {
    return "\n" + std::regex_replace(text, std::regex("(^|\n)[ \t]+"), "$1");
}

void CheckPart(const std::string& box, const std::string& whole) {
    const std::regex gap("[^\n]*\\.\\.\\.\n");
    std::size_t at = 0;
    for (std::sregex_token_iterator part(box.begin(), box.end(), gap, -1), end; part != end && at != whole.npos; ++part)
        EXPECT_NE(at = whole.find(WithoutIndentation(*part), at), whole.npos) << *part;
}

// "brindle COMMAND ...", "./run ..." or "./check STEP ...", up to two blanks.
void CheckCall(const std::string& line) {
    const std::string call = line.substr(0, line.find("  "));
    const bool isTool = call.starts_with("brindle ");
    const std::string program = Find(call, isTool ? "^(brindle( [a-z]+)?)" : "^(\\./[a-z]+)").at(0);
    const std::string help = RunShell((isTool ? "" : "cd " + kTree.string() + "; ") + program + " --help");
    for (const std::string& word : Find(call, isTool ? "[ \\[](--?[a-z][a-z-]*)" : " ([a-z-]+)"))
        EXPECT_TRUE(std::regex_search(help, std::regex("\\s" + word + "[,\\s]"))) << call << "\n" << help;
}

std::string ReadFile(const fs::path& file) { return {std::istreambuf_iterator<char>(std::ifstream(file).rdbuf()), {}}; }

// All of the tree but this test.
const std::string& Sources() {
    static const std::string sources =
        RunShell("cd " + kTree.string() +
                 "; find CMakeLists.txt Include Source Platform Tools Benchmarks Examples cmake "
                 "Tests -type f ! -name GuideTest.cpp -exec cat {} +");
    return sources;
}

void CheckText(const std::string& text, const fs::path& folder) {
    for (const std::string& call : Find(text, "`((?:brindle |\\./run|\\./check)[^`]*)`"))
        CheckCall(call);
    for (const std::string& file : Find(text, "(?:\\]\\(|`(?=[A-Z]\\w*/))([\\w./]+)[)#`]"))
        EXPECT_TRUE(fs::exists(kTree / file) || fs::exists(folder / file)) << file;
    for (const std::string& name : Find(text, "`(BRINDLE_\\w+|[A-Z]\\w*[a-z]\\w*)`"))
        EXPECT_NE(Sources().find(name), std::string::npos) << name;
}

void CheckBox(const Box& box, const fs::path& page) {
    if (box.kind == "around") return CheckText(box.text, page.parent_path());
    if (box.kind.empty()) return CheckDialogue(box.text);
    if (box.kind == "macro") return CheckMacros(box.text);
    if (box.kind == "usage") {
        for (const std::string& call : Find(box.text, "([^\n]+)"))
            CheckCall(call);
    } else if (box.file.empty()) {
        // The test that reads it names page and box side by side.
        const std::string reader = page.filename().string() + "\\W{1,4}" + box.kind + "\\b";
        EXPECT_TRUE(std::regex_search(Sources(), std::regex(reader))) << "a box that nothing checks";
    } else if (std::isupper(box.file.front())) {
        CheckPart(box.text, WithoutIndentation(ReadFile(kTree / box.file)));
    } else {
        EXPECT_TRUE(box.kind == "xml" || box.kind == "toml") << "a box that nothing checks";
        fs::create_directories(fs::absolute(box.file).parent_path());
        std::ofstream(box.file) << box.text;
    }
}

TEST_F(ToolTest, EveryBoxOfEveryPageHolds) {
    const fs::path here = fs::current_path();
    std::size_t boxCount = 0;
    for (const fs::path folder : {"", "Docs", "Benchmarks", "Fuzz", "Platform", "Source"}) {
        for (const fs::path& page : fs::directory_iterator(kTree / folder)) {
            if (page.extension() != ".md" || page.stem() == "Results") continue;
            fs::create_directory(here / page.stem());
            fs::current_path(here / page.stem());
            std::ifstream stream(page);
            for (const Box& box : ReadBoxes(stream)) {
                SCOPED_TRACE(page.string() + ": " + box.kind + " " + box.file + "\n" + box.text);
                CheckBox(box, page);
                ++boxCount;
            }
        }
    }
    EXPECT_GE(boxCount, 150u);
}

} // namespace
