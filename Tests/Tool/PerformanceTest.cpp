// "--performance": what the record of a run holds, and that nothing else comes of asking for it.
#include <regex>

#include "Tool/ToolFixture.h"

namespace {

namespace fs = std::filesystem;

struct PerformanceTest : ToolTest {
    static ProcessResult Run(const std::vector<std::string>& arguments, const std::string& input) {
        ProcessRequest request = Request(arguments, input);
        request.settings = {"BRINDLE_SETTINGS=settings.toml", "BRINDLE_HOME=" + fs::current_path().string()};
        return RunProcess(request);
    }

    // What the one record says, with its steps as name and number of calls, and where it was.
    std::string TakeRecord(std::string& path) const {
        path = fs::absolute(fs::directory_iterator("logs")->path()).string();
        std::string text = Bytes(path);
        EXPECT_EQ(fs::remove_all("logs"), 2u) << "one file and the directory";
        text = std::regex_replace(text, std::regex("[^]*<RP n=\"|\" rN=.*Z\" |[\\s<>=\"]+"), " ");
        text = std::regex_replace(text, std::regex("CF n (.*?) et \\d+ nc (\\d+) /| +"), "$1 $2");
        return std::regex_replace(text, std::regex("et [1-9]\\d*"), "some");
    }
};

TEST_F(PerformanceTest, RecordsTheStepsOfARunAndNotesWhere) {
    const std::string note = "brindle: note: performance of the ", end = " /C /RS /RP /PerformanceData ";
    std::string path;
    Write("d.db", "");
    const std::vector<std::string> query = {"query", "--database", "d.db", "-p", "n=3", "--performance"};
    const auto queried = Run(query, "select column1 a from (values (1), (2), (3)) where a<#$n#");
    const std::string steps = " RC ![CDATA[-]] /RC RS some C n brindle some expansion 1 execution 1";
    EXPECT_EQ(TakeRecord(path), " brindle query status SUCCESS" + steps + " printing 4" + end);
    EXPECT_EQ(queried, (ProcessResult{0, "a\n-\n1\n2\n", note + "run in " + path + "\n"}));
    const auto failed = Run(query, "select b from t");
    EXPECT_EQ(TakeRecord(path), " brindle query status FAIL" + steps + end);
    EXPECT_TRUE(failed.status == 1 && failed.errors.starts_with(note + "failed run in " + path + "\n-:")) << failed;
    Write("a\n]]>.sql", "#$x#"), Write("settings.toml", "\"General Options\".PerformanceTimeUnitFactor = 1");
    const auto expanded = Run({"expand", "a\n]]>.sql", "-p", "x=1", "--performance"}, "");
    const std::string inSeconds = " RS et 0 C n brindle et 0 expansion 1 printing 1";
    EXPECT_EQ(TakeRecord(path), " brindle expand status SUCCESS RC ![CDATA[a ]] .sql]] /RC" + inSeconds + end);
    EXPECT_EQ(expanded, (ProcessResult{0, "1", note + "run in " + path + "\n"}));
}

TEST_F(PerformanceTest, ARecordThatFailsIsToldAndNothingIsRecordedUnasked) {
    EXPECT_TRUE(Run({"expand"}, "a") == (ProcessResult{0, "a", ""}) && !fs::exists("logs"));
    Write("logs", "a file");
    const std::string logs = fs::absolute("logs").string();
    EXPECT_EQ(Run({"expand", "--performance"}, "a"),
              (ProcessResult{1, "a", logs + ": cannot write the performance record\n"}));
}

} // namespace
