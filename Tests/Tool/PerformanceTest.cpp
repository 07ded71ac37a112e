// "--performance": what the record of a run holds, and that nothing else comes of asking for it.
#include <filesystem>
#include <regex>

#include <sqlite3.h>

#include "Tool/ToolFixture.h"

namespace {

namespace fs = std::filesystem;

class PerformanceTest : public ToolTest {
protected:
    PerformanceTest() {
        sqlite3* database = nullptr;
        EXPECT_EQ(sqlite3_open("d.db", &database), SQLITE_OK);
        sqlite3_exec(database, "create table t(a); insert into t values (1), (2), (3)", nullptr, nullptr, nullptr);
        sqlite3_close(database);
    }

    static ProcessResult Run(const std::vector<std::string>& arguments, const std::string& input) {
        ProcessRequest request = Request(arguments, input);
        request.settings = {"BRINDLE_SETTINGS=settings.toml", "BRINDLE_HOME=" + fs::current_path().string()};
        return RunProcess(request);
    }

    // The one record as "name status <file> total | step calls | ...", and where it was.
    static std::string TakeRecord(std::string& path) {
        path = fs::absolute(fs::directory_iterator("logs")->path()).string();
        const std::string text = Read(path);
        EXPECT_EQ(fs::remove_all("logs"), 2u) << "one file and the directory";
        const std::regex run(
            "<RP n=\"(.*?)\" .* status=\"(.*)\" >\\s+<RC><!\\[CDATA(.*)\\]></RC>\\s+<RS et=\"(\\d+)\" >\\s+"
            "<C n=\"brindle\" et=\"\\4\" >([^]*?)</C>\\s+</RS>\\s+</RP>\\s+</PerformanceData>\n$");
        std::smatch parts;
        if (!std::regex_search(text, parts, run)) return text;
        const std::regex step("\\s*<CF n=\"(.*)\" et=\"\\d+\" nc=\"(\\d+)\" />\\s*");
        const bool hasTime = std::stol(parts[4]) > 0;
        return parts.format("$1 $2 $3 ") + (hasTime ? "some" : "none") +
               std::regex_replace(parts.str(5), step, " $1 $2");
    }
};

TEST_F(PerformanceTest, RecordsTheStepsOfARunAndNotesWhere) {
    const std::string name = "a\n]]>\".sql", note = "brindle: note: performance of the run in ";
    std::string path;
    Write(name, "#$x#");
    const auto query =
        Run({"query", "--database", "d.db", "-p", "n=3", "--performance"}, "select a from t where a<#$n#");
    EXPECT_EQ(TakeRecord(path), "brindle query SUCCESS [-] some expansion 1 execution 1 printing 4");
    EXPECT_EQ(query, (ProcessResult{0, "a\n-\n1\n2\n", note + path + "\n"}));
    Write("settings.toml", "\"General Options\".PerformanceTimeUnitFactor = 1");
    const auto expanded = Run({"expand", name, "-p", "x=1", "--performance"}, "");
    EXPECT_EQ(TakeRecord(path), "brindle expand SUCCESS [a ]] >\".sql] none expansion 1 printing 1") << "in seconds";
    EXPECT_EQ(expanded, (ProcessResult{0, "1", note + path + "\n"}));
}

TEST_F(PerformanceTest, ARunThatFailsAndARecordThatFailsAreTold) {
    std::string path;
    for (const auto& [text, steps] :
         {std::pair("#$x", "expansion 1"), {"select b from t", "expansion 1 execution 1"}}) {
        const ProcessResult failed = Run({"query", "--database", "d.db", "--performance"}, text);
        EXPECT_EQ(TakeRecord(path), std::string("brindle query FAIL [-] some ") + steps);
        EXPECT_EQ(failed.errors.find("brindle: note: performance of the failed run in " + path + "\n-:"), 0u);
        EXPECT_EQ(failed.status, 1);
    }
    EXPECT_EQ(Run({"expand"}, "a"), (ProcessResult{0, "a", ""}));
    EXPECT_FALSE(fs::exists("logs")) << "nothing is recorded unasked";
    Write("logs", "a file");
    EXPECT_EQ(Run({"expand", "--performance"}, "a"),
              (ProcessResult{1, "a", "brindle: the performance record cannot be written to the logs directory\n"}));
}

} // namespace
