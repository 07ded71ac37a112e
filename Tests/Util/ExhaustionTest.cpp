// Work that is short of memory, and work whose files fail: what comes out, and that the next call works.
#include <memory>

#include "PlatformHooks.h"
#include "ZBLCore/ZBLFmFile64.h"
#include "ZBLIDOM/ZBLIDOM_Helper.h"

#include "AQE_AutoPerformance.h"
#include "AQE_LogFile.h"
#include "AQE_PerfData.h"
#include "AQE_Performance.h"
#include "AQE_ResourcePerformance.h"
#include "AQM_I_MacroExpander.h"
#include "AQU_I_ParameterAccessCoordinator.h"
#include "AQU_ParameterMapApp.h"
#include "AQU_csvFile_v2.h"
#include "TarnPerformance.h"

#include "Support/Directory.h"
#include "Support/FailInTurn.h"

namespace {

using namespace brindle_test;
using namespace brindle_platform;

const std::string kNoMemory = "std: std::bad_alloc";
constexpr const char* kRecords = "first|a field, in quotes|300|first|é\t\"|300|";

struct Exhaustion : testing::Test, Directory {
    Exhaustion() { setProgramDirectory(Path("bin")); }
};

TEST_F(Exhaustion, TheFirstRecordThatIsLostDoesNotEndTheLog) {
    setenv("BRINDLE_LOG", "a log with a rather long name", 1);
    FailInTurn(allocationsLeft, "logged", {"lost", kNoMemory}, [this] {
        const auto before = Bytes("a log with a rather long name").size();
        AQE_LogFile("QE").Log(AUT_I_LogFile::ELL_Failure, "a text");
        return Bytes("a log with a rather long name").size() > before ? "logged" : "lost";
    });
}

// What has failed is done again with the same objects.
TEST_F(Exhaustion, AnExpansionChangesNothingAndCanBeDoneAgain) {
    overrideOption("QueryEngine", "GetMacroExpansionExecutionReport", "1");
    overrideOption("General Options", "MultiValuesAllowed", "1"), setLogLevel("QueryEngine", 7);
    setLogSink([](const LogRecord&) {});
    const I18NString text = "é#sq($a)#|#csv(@l, ';')#|#$m{'k'}#|#/*c*/join('+', sort(split(' ', $a + ' a é')))#|"
                            "#substitute('b', 'a rather long text, beyond a short one', $m{$k})#";
    const char* const answer = R"(5<str><macro position="0">#$<parameter position="2">x</parameter>#</macro></str>)";
    FailInTurn(allocationsLeft, answer, {kNoMemory}, [&text] {
        AQU_ParameterMapApp environment("_env", 0), map("m", 0);
        const std::unique_ptr<AQU_I_ParameterAccessCoordinator> parameters{AQU_I_ParameterAccessCoordinator::Create()};
        parameters->AddParameterMap(&environment), parameters->AddParameterMap(&map), map.Set("m", "k", "#'<b>'#");
        for (const auto& [key, value] : {std::pair("a", "#$m{'k'}#"), {"k", "k"}, {"l", "x"}, {"l", "yy"}})
            environment.Set("_env", key, value);
        AQM_I_MacroExpander expander;
        I18NString result = "old";
        bool isExpanded = false;
        const auto work = [&] {
            std::vector<AQM_I_MacroExpander::PositionInfo> blocks;
            isExpanded = expander.Expand(text, parameters.get(), result);
            expander.GetMacroPositions(text, blocks);
            EXPECT_EQ(result, "é'<b>'|'x';'yy'|<b>|<b>+a+é|<a rather long text, beyond a short one>");
            return std::to_string(blocks.size()) + ZBLIDOM_Helper::serialize(expander.GetAsXml("#$x#")).c_str();
        };
        try {
            return work();
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(isExpanded || result == "old") << result;
            work();
            throw;
        }
    });
}

// A call that has found no memory is made again.
auto Again(const auto& call) {
    try {
        return call();
    } catch (const std::bad_alloc&) {
        return call();
    }
}

std::string Put(const char* name) {
    const auto file = Again([name] { return std::make_unique<AQU_csvFile_v2>(name, "w"); });
    for (const char* const field : {"a field, in quotes", "é\t\""})
        Again([&] { file->Put({"first", field, I18NString(U'x', 300)}); });
    return "written";
}

// All fields, a stroke behind each.
std::string Get(const char* name) {
    const auto file = Again([name] { return std::make_unique<AQU_csvFile_v2>(name, "r"); });
    std::string text;
    for (std::vector<I18NString> fields; Again([&] { return fields.clear(), file->Get(fields); });) {
        const Calm calm;
        for (const I18NString& field : fields)
            text += (field.size() < 50 ? field.c_str() : std::to_string(field.size())) + "|";
    }
    return text;
}

TEST_F(Exhaustion, RecordsThatFoundNoMemoryAreWrittenAndReadTheNextTime) {
    for (const char* const name : {"x.csv", "x.txt"})
        FailInTurn(allocationsLeft, kRecords, {}, [name] { return Put(name), Get(name); });
}

TEST_F(Exhaustion, FilesThatFailAreNamedOrEnd) {
    const auto told = [](const char* text) { return std::string("QEException -1 ") + text; };
    FailInTurn(fileCallsLeft, "written",
               {told(R"(0x35d783ff("x.txt") Source/QUcsvFile:51)"), told(R"(0x35d4834c("x.txt") Source/QUcsvFile:86)"),
                told(R"(0x35d4834c("x.txt") Source/QUcsvFile:268)")},
               [] { return Put("x.txt"); });
    Put("x.csv");
    const std::string first = "first|a field, in quotes|300|", refused = R"(0x35d783ff("x.csv") Source/QUcsvFile:51)";
    FailInTurn(fileCallsLeft, kRecords, {"", first + "first|é\t\"|169|131|", told(refused.c_str())},
               [] { return Get("x.csv"); });
    FailInTurn(fileCallsLeft, "131", {"130", "101", "000"}, [] {
        ZBLFmFile64 file;
        const int opened = file.Open("x", 2, false);
        const long written = file.Write("abc", 3);
        return std::to_string(opened) + std::to_string(written) + std::to_string(file.Close());
    });
}

TEST_F(Exhaustion, ARunIsWrittenWholeOrLost) {
    setLoggerThreshold("Perf.QFS", 20000), setLoggerThreshold("Perf.DAM.VKE", 10000);
    setLogLevel("QueryEngine", 7), setLogSink([](const LogRecord&) {});
    // What failed, and the file's last two tags.
    const auto measure = [this] {
        std::string answer = FailureOf([] {
            TarnPerformance::Initialize("tests");
            AQU_ResourcePool pool;
            AQE_PerfData& run = *AQE_ResourcePerformance::Create(&pool);
            const I18NString text = "a text of some length";
            AQE_ResourcePerformance::SetReportContext(&pool, text, "session", "request");
            const int query = run.RegisterQuery("q"), component = TarnPerformance::RegisterComponent(&run, text);
            const int function = TarnPerformance::RegisterComponentFunction(&run, component, text);
            const AQE_AutoPerformance outer(&pool, query, 0, 0), refused(&run, query, 99, 0);
            AQE_IPFPerformance owner(AQE_IPFPerformance::GetDefaultComponent());
            const AQE_Performance indication(&owner, 50000, text, text, text, text, text);
            const AQE_AutoPerformance inner(&run, query, component, function);
            run.AddProviderMessage(query, 0, AUT_I_LogFile::ELL_Failure, text);
        });
        TarnPerformance::Terminate();
        const Calm calm;
        std::filesystem::create_directory("logs");
        for (const auto& entry : std::filesystem::directory_iterator("logs")) {
            const std::string text = "<<" + Bytes(entry.path().string());
            answer += ", a file " + text.substr(text.rfind('<', text.rfind('<') - 1));
        }
        std::filesystem::remove_all("logs");
        return answer;
    };
    const std::string lost = "nothing thrown", whole = ", a file </RP>\n</PerformanceData>\n";
    FailInTurn(allocationsLeft, lost + whole, {lost, kNoMemory, kNoMemory + whole}, measure);
    FailInTurn(fileCallsLeft, lost + whole,
               {lost, lost + ", a file <<", lost + ", a file </Attributes>\n\t</ElementAndAttributeIndex>\n",
                lost + ", a file </RS>\n\t</RP>\n"},
               measure);
}

} // namespace
