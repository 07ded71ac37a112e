// What every command shares: usage errors, files that can't be read or written.
#include "Tool/ToolFixture.h"

namespace {

TEST_F(ToolTest, WrongUsageHasStatusTwoAndOneLine) {
    const auto refused = [](std::vector<std::string> arguments, const std::string& what) {
        return ToolCase{std::move(arguments), "#$a#", {2, "", "brindle: " + what + " --help'\n"}};
    };
    Check({refused({}, "a command is missing; see 'brindle"),
           refused({"[frob]"}, "unknown command '[frob]'; see 'brindle"),
           refused({"--frob", "expand"}, "unknown option '--frob'; see 'brindle"),
           refused({"expand", "a", "[b]"}, "unexpected argument '[b]'; see 'brindle expand"),
           refused({"check", "--js\x1bon"}, "unknown option '--js\xEF\xBF\xBDon'; see 'brindle check"),
           refused({"expand", "--report", "-"}, "--report: expected a file, found '-'; see 'brindle expand"),
           refused({"expand", "--report=", "q.sql"}, "--report: expected a file, found ''; see 'brindle expand"),
           refused({"csv", "a", "--to", "b", "--to=c"}, "--to: expected one value, found 2; see 'brindle csv"),
           refused({"expand", "-p", "=x"}, "-p: expected NAME=VALUE, found '=x'; see 'brindle expand"),
           refused({"blocks", "-m", "m=:k"}, "-m: expected MAP:KEY=VALUE, found 'm=:k'; see 'brindle blocks"),
           refused({"name", "physical"}, "TEXT is required; see 'brindle name"),
           refused({"name", "frob", "a"},
                   "RULE: expected physical, object, split or identifier, found 'frob'; see 'brindle name"),
           refused({"query", "--format"}, "--format: expected FORMAT, found nothing; see 'brindle query"),
           refused({"csv", "a.csv", "--to", "-"}, "--to: expected a file, found '-'; see 'brindle csv"),
           refused({"functions", "--property", "x"},
                   "--property: only show answers properties; see 'brindle functions")});
}

TEST_F(ToolTest, FilesThatCannotBeReadAreNamed) {
    std::filesystem::create_directory("folder");
    const std::string missing = "cannot open the file: No such file or directory\n";
    Check({{{"blocks", "--params", "no.json"}, "", {1, "", "no.json: " + missing}},
           {{"csv", "no.csv"}, "", {1, "", "no.csv: " + missing}},
           {{"csv", "folder"}, "", {1, "", "folder: expected a regular file\n"}},
           {{"expand", "--params", "-"}, "{}", {1, "", "-: standard input is asked for twice\n"}},
           {{"check", "no.sql", "-", "folder", "", "a\x1b\nb"},
            "#",
            {1, "",
             "no.sql: " + missing + "-:1:1: the text ends inside a macro block\n#\n^\n" +
                 "folder: cannot read the file: Is a directory\n'': " + missing + "a\xEF\xBF\xBD b: " + missing}}});
}

TEST_F(ToolTest, OutputThatCannotBeWrittenIsAFailure) {
    const std::string full = ": No space left on device\n";
    for (const char* const argument : {"expand", "blocks", "document", "--help"}) {
        ProcessRequest request = Request({argument}, "a##");
        request.outputFile = "/dev/full";
        const ProcessResult expected{1, "", "brindle: cannot write to standard output" + full};
        EXPECT_EQ(RunProcess(request), expected) << argument;
    }
    ProcessRequest closed = {{"/bin/sh", "-c", "exec \"$0\" expand >&-", BRINDLE_TOOL_PROGRAM}, "a"};
    closed.settings = {"BRINDLE_LOG=log"}; // a file that must not take the stream's place
    EXPECT_EQ(RunProcess(closed),
              (ProcessResult{1, "", "brindle: cannot write to standard output: Bad file descriptor\n"}));
    Check({{{"expand", "--report", "/dev/full"}, "a", {1, "", "/dev/full: cannot write the file" + full}}});

    // What was written is gone, and a link to it stays.
    Write("a.csv", "x\r\n"), std::filesystem::create_symlink("target", "link");
    for (const char* const call : {"csv a.csv --to link", "expand a.csv --report link"}) {
        Write("target", "old");
        const std::string shell = "trap '' XFSZ; ulimit -f 0; \"$0\" " + std::string(call);
        EXPECT_EQ(RunProcess({{"/bin/sh", "-c", shell, BRINDLE_TOOL_PROGRAM}}).status, 1) << call;
        EXPECT_TRUE(!std::filesystem::exists("target") && std::filesystem::is_symlink("link")) << call;
    }
}

} // namespace
