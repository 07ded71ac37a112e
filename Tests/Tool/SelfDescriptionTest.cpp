// What the program tells about itself: help, manual page and completion name the same, and what they offer works.
#include <sstream>

#include "Tool/ToolFixture.h"

namespace {

const std::string kPrograms = std::filesystem::path(BRINDLE_TOOL_PROGRAM).parent_path();
const std::string kPage = kPrograms + "/../share/man/man1/brindle.1";
const std::string kScript = kPrograms + "/../share/bash-completion/completions/brindle";

std::string Between(const std::string& text, const std::string& start, const std::string& end) {
    const std::size_t at = text.find(start);
    return at == text.npos ? "" : text.substr(at + start.size(), text.find(end, at + start.size()) - at - start.size());
}

// The first words of the lines that are indented by two blanks.
std::vector<std::string> Entries(const std::string& help) {
    std::vector<std::string> entries;
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with("  ") && line[2] != ' ') entries.push_back(line.substr(2, line.find(' ', 2) - 2));
    return entries;
}

ProcessResult Shell(const std::string& line, const std::string& input = "") {
    return RunProcess({{"/bin/bash", "-c", line}, input, "", {"INPUTRC=/dev/null", "HISTFILE=/dev/null", "TERM=dumb"}});
}

TEST_F(ToolTest, EveryCommandIsDescribedWholeWithAnExampleThatRuns) {
    std::filesystem::create_directory("queries");
    Write("queries/a.sql", "select #$a#");
    Write("orders.csv", "1,2\r\n");
    Write("calendar.json", R"({"items": {"1": "year", "2": "month"}, "keys": [[1, 2]], "groups": [[1]]})");
    MakeDatabase("sales.db", "create table customer (name)");
    std::string page = Bytes(kPage);
    std::erase(page, '\\');
    const std::string shared = Between(page, "\n.SH OPTIONS", "\n.S"), script = Bytes(kScript);
    const auto commands = Entries(Between(RunProcess(Request({"--help"})).output, "\nCommands:\n", "\n\n"));
    EXPECT_GE(commands.size(), 11u);
    for (const std::string& command : commands) {
        const std::string help = RunProcess(Request({command, "--help"})).output;
        const std::string example = help.starts_with("Example: ") ? help.substr(9, help.find('\n') - 9) : "";
        EXPECT_NE(example.find("brindle " + command), std::string::npos) << help;
        EXPECT_NE(help.find("\nUsage: brindle " + command + " "), std::string::npos) << help;
        const ProcessResult result = Shell("PATH=" + kPrograms + ":$PATH; " + example);
        EXPECT_TRUE(result.status == 0 && result.errors.empty()) << example << "\n" << result;

        const std::string described = Between(page, "\n.SS " + command + "\n", "\n.S") + shared;
        const std::string offered = " " + Between(script, "\n    " + command + ")\n        options='", "'") + " ";
        for (const std::string& entry : Entries(help)) {
            EXPECT_NE(described.find("\nfB" + entry + "fR"), std::string::npos) << command << " " << entry;
            std::istringstream names(entry.front() == '-' ? entry : "");
            for (std::string name; std::getline(names, name, ',');)
                EXPECT_NE(offered.find(" " + name + " "), std::string::npos) << command << " " << name;
        }
    }
}

TEST_F(ToolTest, BashCompletesWhatIsTyped) {
    Write("split.sql", "");
    constexpr const char* rows[][2] = {
        {"exp\t-", "<expand><->"},
        {"query --fo\tj\t", "<query><--format><json>"},
        {"query --format=cs\t", "<query><--format=csv>"},
        {"functions --type summary --type su\t", "<functions><--type><summary><--type><summary>"},
        {"functions --json li\t", "<functions><--json><list>"},
        {"name object spl\t", "<name><object><split.sql>"},
    };
    const std::string prepared = "brindle() { printf '<%s>' \"$@\"; }\n. '" + kScript + "'\nbrindle ";
    for (const auto& [typed, received] : rows) // in a session of its own, so that bash can't take the terminal
        EXPECT_EQ(Shell("setsid --wait bash --norc -i", prepared + typed + "\n").output, received) << typed;
}

TEST_F(ToolTest, ManualPageIsCleanRoff) {
    if (Shell("command -v groff").status != 0) GTEST_SKIP() << "there is no groff";
    EXPECT_EQ(Shell("groff -man -Tutf8 -ww -z " + kPage), (ProcessResult{0, "", ""}));
}

} // namespace
