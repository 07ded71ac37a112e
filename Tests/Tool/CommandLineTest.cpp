// What every command shares: help, usage errors, files that can't be read or written, colour.
#include "Tool/ToolFixture.h"

namespace {

using namespace std::string_literals;

TEST_F(ToolTest, WrongUsageHasStatusTwoAndOneLine) {
    const auto refused = [](std::vector<std::string> arguments, const std::string& what) {
        return ToolCase{std::move(arguments), "#$a#", {2, "", "brindle: " + what + " --help'\n"}};
    };
    Check({
        refused({}, "a command is missing; see 'brindle"),
        refused({"--json"}, "unknown option '--json'; see 'brindle"),
        refused({"[frob]"}, "unknown command '[frob]'; see 'brindle"),
        refused({"expand", "a", "[b]"}, "unexpected argument '[b]'; see 'brindle expand"),
        refused({"check", "--js\x1bon"}, "unknown option '--js\xEF\xBF\xBDon'; see 'brindle check"),
        refused({"expand", "--report", "-"}, "--report: expected a file, found '-'; see 'brindle expand"),
        refused({"expand", "--report"}, "--report: 1 required FILE missing; see 'brindle expand"),
        refused({"expand", "-p", "=x"}, "-p: expected NAME=VALUE, found '=x'; see 'brindle expand"),
        refused({"expand", "-p", "x"}, "-p: expected NAME=VALUE, found 'x'; see 'brindle expand"),
        refused({"blocks", "-m", "m=:k"}, "-m: expected MAP:KEY=VALUE, found 'm=:k'; see 'brindle blocks"),
        refused({"blocks", "-m", ":k=x"}, "-m: expected MAP:KEY=VALUE, found ':k=x'; see 'brindle blocks"),
        refused({"name", "physical"}, "TEXT is required; see 'brindle name"),
        refused({"name", "frob", "a"}, "RULE: frob not in {physical,object,split,identifier}; see 'brindle name"),
    });
}

TEST_F(ToolTest, EveryCommandHasHelpWithAnExample) {
    for (const std::string command : {"expand", "check", "blocks", "document", "name", "query"}) {
        const ProcessResult help = RunProcess(Request({command, "--help"}));
        EXPECT_EQ(help.status, 0) << command;
        EXPECT_EQ(help.errors, "") << command;
        EXPECT_NE(help.output.find("Usage: brindle " + command + " [OPTIONS]"), std::string::npos) << help.output;
        EXPECT_NE(help.output.find("\nExample: "), std::string::npos) << help.output;
        EXPECT_NE(RunProcess(Request({"--help"})).output.find("\n  " + command + " "), std::string::npos) << command;
        Check({{{command, "--version"}, "", RunProcess(Request({"--version"}))}});
    }
    EXPECT_EQ(RunProcess(Request({"--version"})).output.substr(0, 8), "brindle ");
}

TEST_F(ToolTest, FilesThatCannotBeReadAreNamed) {
    std::filesystem::create_directory("folder");
    const std::string missing = "cannot open the file: No such file or directory\n";
    const std::string isFolder = "cannot read the file: Is a directory\n";
    Check({
        {{"expand", "no.sql"}, "", {1, "", "no.sql: " + missing}},
        {{"blocks", "--params", "no.json"}, "", {1, "", "no.json: " + missing}},
        {{"expand", "--params", "-"}, "{}", {1, "", "-: standard input is asked for twice\n"}},
        {{"document", "folder"}, "", {1, "", "folder: " + isFolder}},
        {{"check", "no.sql", "-", "folder", "a\x1b\nb"},
         "#",
         {1, "",
          "no.sql: " + missing + "-:1:1: the text ends inside a macro block\n#\n^\nfolder: " + isFolder +
              "a\xEF\xBF\xBD b: " + missing}},
    });
}

TEST_F(ToolTest, OutputThatCannotBeWrittenIsAFailure) {
    const std::string full = ": No space left on device\n";
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"expand"}, {"blocks"}, {"document"}, {"name", "physical", "a"}, {"--help"}, {"--version"}}) {
        ProcessRequest request = Request(arguments, "a##");
        request.outputFile = "/dev/full";
        const ProcessResult expected{1, "", "brindle: cannot write to standard output" + full};
        EXPECT_EQ(RunProcess(request), expected) << arguments.front();
    }
    Check({
        {{"expand", "--report", "/dev/full"}, "a", {1, "", "/dev/full: cannot write the file" + full}},
        {{"expand", "--report", "no/r"}, "a", {1, "", "no/r: cannot open the file: No such file or directory\n"}},
    });
    EXPECT_TRUE(std::filesystem::exists("/dev/full"));
}

TEST_F(ToolTest, ColourIsForTerminalsWithoutNoColor) {
    ProcessRequest request = Request({"check"}, "a #$#");
    request.errorsToTerminal = true;
    const std::string plain = "-:1:5: unexpected '#' in a macro block\r\na #$#\r\n    ^\r\n";
    EXPECT_EQ(RunProcess(request).errors, "\x1b[1m-:1:5:\x1b[0m unexpected '#' in a macro block\r\na #$#\r\n"
                                          "    \x1b[1;31m^\x1b[0m\r\n");
    for (const char* const setting : {"NO_COLOR=1", "TERM=dumb"}) {
        request.settings.insert(request.settings.begin(), setting);
        EXPECT_EQ(RunProcess(request).errors, plain) << setting;
        request.settings.erase(request.settings.begin());
    }
}

} // namespace
