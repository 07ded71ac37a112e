// Runs, their guards and their file. The clocks stand until a test moves them, one tick is one unit of time, and what
// the runs have recorded is read back from the file in a short form.
#include <latch>
#include <list>
#include <memory>
#include <regex>
#include <set>
#include <thread>
#include <tuple>

#include <gtest/gtest.h>

#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"
#include "ZBLIDOM/ZBLIDOM_Parser.h"

#include "AQE_AutoPerformance.h"
#include "AQE_PerfData.h"
#include "AQE_ResourcePerformance.h"
#include "TarnPerformance.h"

#include "Support/Directory.h"

namespace {

namespace fs = std::filesystem;
using namespace brindle_platform;
using ELogLevel = AUT_I_LogFile::ELogLevel;
using Numbers = std::vector<int>;

struct Performance : testing::Test, brindle_test::Directory {
    Performance() {
        setProgramDirectory(Path("bin")), setProcessId(77), setLogLevel("QueryEngine", 7);
        setPerformanceCounter([this] { return m_clock; }), setMillisClock([this] { return m_clock; });
        setTimeStamp([this](int form) { return form == 0 ? I18NString("S") : m_stamp; });
        setLogSink([this](const LogRecord& log) { (m_log += std::to_string(log.level)) += log.text.bytes(); });
    }
    ~Performance() override { m_run.reset(), TarnPerformance::Terminate(); }

    // With a run that has one query, "q". Verbosity 0 without a threshold, 7, 3, 2, 1 for 10000, 20000, 30000, more.
    void Start(std::optional<int> threshold = 20000, const char* unitsPerSecond = "1000000000") {
        if (threshold) setLoggerThreshold("Perf.QFS", *threshold);
        overrideOption("General Options", "PerformanceTimeUnitFactor", unitsPerSecond);
        TarnPerformance::Initialize("tests");
        m_run = std::make_unique<AQE_PerfData>();
        m_run->RegisterQuery("q");
    }

    // Lets the time pass within a measurement.
    void Spend(int query, int component, int function, std::int64_t ticks) {
        const AQE_AutoPerformance guard(m_run.get(), query, component, function);
        m_clock += ticks;
    }

    // Ends run and instrumentation, and takes the file away. Each run is "name=total", then each component with its
    // time and, in brackets, its functions with time and calls, and its messages; then the queries in the same way.
    std::string TakeRuns(const std::string& path = "logs/Performance_S.xml") {
        m_run.reset(), TarnPerformance::Terminate();
        std::string text = Bytes(path);
        fs::remove(path);
        const auto show = [&text](const char* form, const char* shown) {
            text = std::regex_replace(text, std::regex(form), shown);
        };
        show("[\t\n]|[^]*</ElementAndAttributeIndex>|</(R.|LMs|PerformanceData)>|<LMs>", "");
        show("<RP n=\"(.*?)\".*?><RS et=\"(.*?)\" >", "$1=$2"), show("<RQ n=\"(.*?)\" et=\"(.*?)\" >", "; $1=$2");
        show("<CF n=\"(.*?)\" et=\"(.*?)\" nc=\"(.*?)\" />", " $1=$2x$3"), show("<LM>.{9}(.*?)]]></LM>", " '$1'");
        show("<C n=\"(.*?)\" et=\"(.*?)\" >", " $1=$2("), show("</C>", ")");
        return text;
    }

    std::unique_ptr<AQE_PerfData> m_run;
    std::string m_log;
    std::int64_t m_clock = 1000;
    I18NString m_stamp = "then";
};

TEST_F(Performance, NamesAreEnteredOnceAndForAllRuns) {
    Start();
    EXPECT_EQ(TarnPerformance::RegisterComponent(nullptr, "x"), -1);
    const auto enter = [](const char* name) { return TarnPerformance::RegisterComponent(name); };
    EXPECT_EQ((Numbers{enter("MDDS"), enter(""), enter(""), enter("x"), enter("x")}), (Numbers{2, 4, 5, 6, 6}));
    Numbers functions;
    for (const int component : {0, 1, 6, 6, 65535, -1, 65536})
        functions.push_back(TarnPerformance::RegisterComponentFunction(component, "LoadData"));
    functions.push_back(TarnPerformance::RegisterComponentFunction(nullptr, 1, "x"));
    EXPECT_EQ(functions, (Numbers{9, 0, 0, 0, 0, -1, -1, -1}));
    Start();
    EXPECT_EQ(enter("y"), 4) << "a new start forgets all but the built-in names";
}

// The summary is made before anything is registered, the queries before or after: each must be long enough. Nothing is
// escaped.
TEST_F(Performance, TablesGrowWithWhatIsRegistered) {
    Start(), m_run->SetReportName("<n&>");
    TarnPerformance::RegisterComponent("<c&>"), TarnPerformance::RegisterComponentFunction(4, "<f&>");
    Spend(m_run->RegisterQuery("<q&>"), 4, 0, 1), TarnPerformance::RegisterComponent("unseen");
    TarnPerformance::RegisterComponentFunction(m_run.get(), 5, "g"); // of a component that the run doesn't have
    Spend(0, 5, 0, 1);
    EXPECT_EQ(m_log, "7Performance internal error: Component ID5 is not registered.");
    for (const auto& [name, number, function] : {std::tuple("unseen", 5, "g"), {"UDA", 0, "sqlStart"}}) {
        TarnPerformance::RegisterComponent(m_run.get(), name); // the second shrinks nothing
        TarnPerformance::RegisterComponentFunction(m_run.get(), number, function);
    }
    Spend(0, 5, 0, 2), Spend(1, 0, 8, 4), m_run->AddProviderMessage(0, 5, ELogLevel(1), "m]]>");
    const std::string rest = " <c&>=1( <f&>=1x1) UDA=4( sqlGenericOther=4x1)";
    EXPECT_EQ(TakeRuns(), "<n&>=7 unseen=2( g=2x1)" + rest + "; q=2 unseen=2( g=2x1 'm]]>'); <q&>=5" + rest);
}

TEST_F(Performance, AnUnregisteredNumberIsLoggedAndNotMeasured) {
    Start();
    const auto check = [this](int query, int component, int function, const std::string& problem) {
        m_log.clear();
        const AQE_AutoPerformance guard(m_run.get(), query, component, function);
        EXPECT_EQ(m_log, "7Performance internal error: " + problem);
        EXPECT_FALSE(m_run->IsBeingInstrumented());
    };
    check(1, 9, 9, "Query ID 1 is not registered."), check(-1, 0, 0, "Query ID -1 is not registered.");
    check(0, 4, 9, "Component ID4 is not registered."), check(0, -1, 0, "Component ID-1 is not registered.");
    check(0, 1, 1, "Function ID1 is not registered for provider DMB");
    check(0, 3, -1, "Function ID-1 is not registered for provider BAPI");
}

TEST_F(Performance, TheFiftyFirstNestedGuardMeasuresNothing) {
    Start();
    std::list<AQE_AutoPerformance> guards;
    for (int depth = 1; depth <= 60; ++depth, ++m_clock)
        guards.emplace_back(m_run.get(), 0, depth > 50 ? 1 : 2, 0);
    for (; !guards.empty(); ++m_clock)
        guards.pop_back();
    EXPECT_EQ(TakeRuns() + m_log, "Report=119 MDDS=119( MDDSDoRequest=119x50)");
}

TEST_F(Performance, GuardsThatOutliveTheirDataTouchNothing) {
    Start();
    std::list<AQE_AutoPerformance> guards;
    guards.emplace_back(m_run.get(), 0, 0, 0), guards.emplace_back(m_run.get(), 0, 1, 0);
    Spend(0, 0, 3, 5), m_run.reset();
    setPerformanceCounter([this] { return ADD_FAILURE() << "the clock, which every end reads first", m_clock; });
    guards.clear();
    const std::string text = "Performance internal Error: Performance object is destructed while being instrumented.";
    // The message of "DMB" isn't shown: it has no finished call.
    EXPECT_EQ(m_log + TakeRuns(), "1" + text + "Report=0 UDA=5( sqlStart=5x1 '" + text + "')");
}

TEST_F(Performance, VerbosityDecidesWhichMessagesAreKept) {
    const auto kept = [this](int threshold) {
        Start(threshold), Spend(0, 2, 0, 1);
        for (const int level : {0, 1, 2, 3, 6, 7, 17})
            for (const auto& [query, component] : {std::pair(0, 2), {1, 2}, {-1, 2}, {0, 4}, {0, -1}})
                m_run->AddProviderMessage(query, component, ELogLevel(level), std::to_string(level).c_str());
        return TakeRuns();
    };
    EXPECT_EQ(kept(50000) + kept(30000), "Report=1 MDDS=1( '0' '1')Report=1 MDDS=1( '0' '1' '2')");
    const std::string begin = "Report=1 MDDS=1( MDDSDoRequest=1x1 '0' '1' '2' '3'";
    EXPECT_EQ(kept(20000) + kept(10000), begin + ")" + begin + " '6' '7' '17')");
}

TEST_F(Performance, ThePoolHoldsTheDataOfTheRun) {
    Start();
    AQU_ResourcePool strange, pool;
    strange.AddResourceItem(8, new AQU_ResourceItem);
    const auto measure = [&](AQU_ResourcePool* from) {
        AQE_ResourcePerformance::AddProviderMessage(from, 0, 2, ELogLevel(1), "m");
        const AQE_AutoPerformance guard(from, 0, 2, 0);
        m_clock += 6;
        return AQE_ResourcePerformance::IsBeingInstrumented(from);
    };
    EXPECT_FALSE(measure(&pool) || measure(&strange) || measure(nullptr));
    AQE_ResourcePerformance::Create(&pool)->RegisterQuery("q");
    EXPECT_TRUE(measure(&pool));
    pool.RemoveResourceItem(8, pool.GetResourceItem(8, 0));
    m_run.reset(AQE_ResourcePerformance::Create(nullptr));
    EXPECT_EQ(TakeRuns() + m_log, "Report=6 MDDS=6( MDDSDoRequest=6x1 'm')Report=0Report=0");
}

TEST_F(Performance, FileHoldsEveryRunAndItsSelfTimesToTheByte) {
    Start();
    m_run->SetReportName("Verkäufe"), m_run->SetRunNumber(1234567), m_run->SetReportContext("<report>", "", "r");
    EXPECT_TRUE(m_run->RegisterQuery("r") == 1 && m_run->RegisterQuery("q") == 0 && m_run->RegisterQuery("r") == 1);
    for (const auto& [query, text] : {std::pair(0, "slow"), {0, "slower"}, {1, "of a component without calls"}})
        m_run->AddProviderMessage(query, 0, ELogLevel(1), text);
    {
        const AQE_AutoPerformance outer(m_run.get(), 0, 0, 0);
        m_clock += 7, Spend(1, 1, 0, 3); // of another query, but off the caller's
        Spend(0, 0, 0, 20);              // the same function: counted twice, no time double
    }
    Spend(0, 0, 8, 100), m_run->SetSuccess();
    m_stamp = "now", m_run = std::make_unique<AQE_PerfData>();
    const I18NString path = TarnPerformance::GetFileName();
    m_run.reset(), TarnPerformance::Terminate();
    EXPECT_TRUE(TarnPerformance::GetFileName().empty());
    EXPECT_EQ(Bytes(path.c_str()), Bytes(BRINDLE_TEST_SOURCE_DIR "/Tests/Engine/performance.xml"));
}

TEST_F(Performance, VerbosityDecidesWhatARecordHolds) {
    const auto check = [this](std::optional<int> threshold, const std::string& summary, const std::string& queries) {
        for (const bool isSingle : {true, false}) {
            Start(threshold), TarnPerformance::SetVerbosityLevel(EPV_Queries);
            Spend(0, 0, 1, 4), Spend(0, 2, 0, 3), Spend(isSingle ? 0 : m_run->RegisterQuery("r"), 0, 1, 5);
            EXPECT_EQ(TakeRuns(), "Report=12" + summary + (isSingle ? "" : queries));
        }
    };
    const std::string mdds = " MDDS=3( MDDSDoRequest=3x1)", byComponent = " MDDS=3() UDA=9()";
    const std::string byQuery = "; q=7 MDDS=3() UDA=4(); r=5 UDA=5()", byFunction = mdds + " UDA=9( sqlTerminate=9x2)";
    const std::string all = "; q=7" + mdds + " UDA=4( sqlTerminate=4x1); r=5 UDA=5( sqlTerminate=5x1)";
    check({}, "", ""), check(50001, byComponent, ""), check(30001, byComponent, "");
    check(30000, byComponent, byQuery), check(20000, byFunction, all), check(10000, byFunction, all);
}

TEST_F(Performance, TimesAreInTheUnitOfTheSettings) {
    const auto shown = [this](bool hasCounter, const char* unitsPerSecond) {
        setPerformanceCounterPresent(hasCounter);
        Start({}, unitsPerSecond), Spend(0, 2, 0, 5999999);
        return TakeRuns().substr(7) + " ";
    };
    EXPECT_EQ(shown(true, "1000") + shown(true, "4294967295") + shown(true, "1") + shown(true, "?"), "5 25769799 0 5 ");
    EXPECT_EQ(shown(false, "1000") + shown(false, "1"), "5999999 5999 ");
}

TEST_F(Performance, ADirectoryThatCannotBeMadeLosesTheRecordsAlone) {
    Write("file", "a file");
    for (const std::string& directory : {m_directory + "/file/logs", m_directory + std::string("/nul\0l", 6)}) {
        Start(), TarnPerformance::SetLogDir(I18NString(directory.data(), directory.size()));
        m_run = std::make_unique<AQE_PerfData>(), TarnPerformance::SetLogDir("../logs"); // too late
        EXPECT_EQ(TarnPerformance::GetFileName() + TakeRuns().c_str(), "");
    }
    EXPECT_FALSE(fs::exists("nul"));
    EXPECT_EQ((Start(), TakeRuns()), "Report=0");
}

TEST_F(Performance, AFileIsOneThatDidNotStandAndEndsWithTheLibrary) {
    Write("bin/Performance_S.xml", "mine");
    fs::create_symlink(m_directory + "/planted", "bin/Performance_S1.xml");
    Start(), TarnPerformance::SetLogDir("."), delete new AQE_PerfData;
    Spend(0, 2, 0, 4), TarnPerformance::Terminate();
    EXPECT_EQ(TakeRuns(), "Report=4 =4( =4x1)") << "another file, and no names are left, nor the directory";
    EXPECT_EQ(TakeRuns("bin/Performance_S2.xml") + Bytes("bin/Performance_S.xml") + Bytes("planted"), "Report=0mine");
}

TEST_F(Performance, RunsOfManyThreadsStandWholeBesideEachOther) {
    Start();
    std::latch atOnce(8); // the first records make the file
    std::list<std::jthread> threads;
    for (int first = 0; first < 8; ++first)
        threads.emplace_back([first, &atOnce] {
            atOnce.arrive_and_wait();
            for (int number = first; number < 8000; number += 8) {
                const I18NString name = std::to_string(number % 50).c_str();
                AQE_PerfData data;
                data.SetRunNumber(number), data.SetReportContext(I18NString(U'x', number / 8), "", "");
                const int query = data.RegisterQuery("q"), component = TarnPerformance::RegisterComponent(&data, name);
                const int function = TarnPerformance::RegisterComponentFunction(&data, component, name);
                const AQE_AutoPerformance outer(&data, query, component, function), inner(&data, query, 0, 0);
            }
        });
    threads.clear(), TarnPerformance::Terminate();

    ZBLIDOM_Document document = ZBLIDOM_DOMImplementation::getInstance().createDocument("", "", {});
    ZBLIDOM_Parser(0).parse(Path("logs/Performance_S.xml"), document);
    const ZBLIDOM_NodeList records = document.getElementsByTagName("RP");
    std::set<int> whole;
    for (long i = 0; i < records.getLength(); ++i) {
        const ZBLIDOM_Element record(records.item(i)), component(record.getElementsByTagName("C").item(0));
        const int number = std::stoi(record.getAttribute("rN").c_str());
        if (number % 50 == std::stoi(component.getAttribute("n").c_str())) whole.insert(number);
    }
    EXPECT_TRUE(records.getLength() == 8000 && whole.size() == 8000) << whole.size();
}

} // namespace
