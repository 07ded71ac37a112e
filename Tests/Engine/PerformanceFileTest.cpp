#include <set>
#include <thread>
#include <tuple>

#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"
#include "ZBLIDOM/ZBLIDOM_Parser.h"

#include "Engine/PerformanceFixture.h"

namespace {

namespace fs = std::filesystem;
using PerformanceFile = PerformanceFixture;

TEST_F(PerformanceFile, HoldsEveryRunToTheByte) {
    Start();
    m_run->SetReportName("Verkäufe"), m_run->SetRunNumber(1234567), m_run->SetReportContext("<report>", "", "r");
    m_run->RegisterQuery("r");
    for (const auto& [query, text] : {std::pair(0, "slow"), {0, "slower"}, {1, "of a component without calls"}})
        m_run->AddProviderMessage(query, 0, AUT_I_LogFile::ELL_Failure, text);
    {
        const AQE_AutoPerformance guard(m_run.get(), 0, 0, 0);
        m_clock += 7;
        Spend(1, 1, 0, 3);
    }
    m_run->SetSuccess();
    m_stamp = "now";
    m_run = std::make_unique<AQE_PerfData>();
    EXPECT_EQ(TarnPerformance::GetFileName().bytes(), m_root + "/logs/Performance_S.xml");
    m_run.reset(), TarnPerformance::Terminate();
    EXPECT_TRUE(TarnPerformance::GetFileName().empty());
    EXPECT_EQ(Read(m_root + "/logs/Performance_S.xml"), Read(BRINDLE_TEST_SOURCE_DIR "/Tests/Engine/performance.xml"));
}

TEST_F(PerformanceFile, VerbosityDecidesWhatARecordHolds) {
    const std::string mdds = " MDDS=3( MDDSDoRequest=3x1)", byComponent = " MDDS=3() UDA=9()";
    const std::string byQuery = "; q=7 MDDS=3() UDA=4(); r=5 UDA=5()", byFunction = mdds + " UDA=9( sqlTerminate=9x2)";
    const std::string all = "; q=7" + mdds + " UDA=4( sqlTerminate=4x1); r=5 UDA=5( sqlTerminate=5x1)";
    using Row = std::tuple<std::optional<int>, std::string, std::string>;
    for (const auto& [threshold, summary, queries] :
         {Row({}, "", ""), Row(50001, byComponent, ""), Row(30001, byComponent, ""), Row(30000, byComponent, byQuery),
          Row(20000, byFunction, all), Row(10000, byFunction, all)}) {
        for (const bool isSingle : {true, false}) {
            Start(threshold);
            Spend(0, 0, 1, 4), Spend(0, 2, 0, 3), Spend(isSingle ? 0 : m_run->RegisterQuery("r"), 0, 1, 5);
            EXPECT_EQ(TakeRuns(), "Report=12" + summary + (isSingle ? "" : queries));
        }
    }
}

TEST_F(PerformanceFile, TimesAreInTheUnitOfTheSettings) {
    using Row = std::tuple<const char*, bool, std::string>;
    for (const auto& [unitsPerSecond, hasCounter, shown] : {Row("1000", true, "5"),
                                                            {"4294967295", true, "25769799"},
                                                            {"1", true, "0"},
                                                            {"text", true, "5"},
                                                            {"1000", false, "5999999"},
                                                            {"1", false, "5999"}}) {
        brindle_platform::setPerformanceCounterPresent(hasCounter);
        Start(50000, unitsPerSecond), Spend(0, 2, 0, 5999999);
        EXPECT_EQ(TakeRuns(), "Report=" + shown + " MDDS=" + shown + "()");
    }
}

TEST_F(PerformanceFile, AFileThatStandsIsNeverWrittenTo) {
    const std::string stem = m_root + "/bin/Performance_S";
    fs::create_directories(m_root + "/bin");
    std::ofstream(stem + ".xml") << "mine";
    fs::create_symlink(m_root + "/planted", stem + "1.xml");
    Start(), TarnPerformance::SetLogDir(".");
    EXPECT_EQ(TakeRuns("/bin/Performance_S2.xml"), "Report=0");
    EXPECT_EQ(Read(stem + ".xml") + Read(m_root + "/planted"), "mine");
}

TEST_F(PerformanceFile, ADirectoryThatCannotBeMadeLosesTheRecordsAlone) {
    std::ofstream(m_root + "/file") << "a file";
    for (const std::string& directory : {m_root + "/file/logs", m_root + std::string("/nul\0l", 6)}) {
        Start(), TarnPerformance::SetLogDir(I18NString(directory.data(), directory.size()));
        m_run = std::make_unique<AQE_PerfData>();
        TarnPerformance::SetLogDir("../logs"); // of no effect on the open stream
        EXPECT_EQ(TarnPerformance::GetFileName() + TakeRuns().c_str(), "");
    }
    EXPECT_FALSE(fs::exists(m_root + "/nul"));
    Start();
    EXPECT_EQ(TakeRuns(), "Report=0");
}

TEST_F(PerformanceFile, ARunThatEndsAfterTheLibraryBeginsAnotherFile) {
    Start(), TarnPerformance::SetLogDir("../other");
    delete new AQE_PerfData;
    Spend(0, 2, 0, 4), TarnPerformance::Terminate();
    EXPECT_EQ(TakeRuns(), "Report=4 =4( =4x1)") << "no names are left, nor the directory";
    EXPECT_EQ(TakeRuns("/other/Performance_S.xml"), "Report=0");
}

TEST_F(PerformanceFile, RunsOfManyThreadsStandWholeBesideEachOther) {
    constexpr int kThreads = 8, kRuns = 1000;
    Start();
    const auto nameOf = [](int number) { return I18NString(std::to_string(number % 50).c_str()); };
    std::vector<std::thread> threads;
    for (int begin = 0; begin < kThreads * kRuns; begin += kRuns) {
        threads.emplace_back([&, begin] {
            for (int number = begin; number < begin + kRuns; ++number) {
                AQE_PerfData data;
                data.SetRunNumber(number), data.SetReportContext(I18NString(U'x', number % kRuns), "", "");
                const int query = data.RegisterQuery("q");
                const int component = TarnPerformance::RegisterComponent(&data, nameOf(number));
                const int function = TarnPerformance::RegisterComponentFunction(&data, component, nameOf(number / 50));
                const AQE_AutoPerformance outer(&data, query, component, function), inner(&data, query, 0, 0);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    TarnPerformance::Terminate();

    ZBLIDOM_Document document = ZBLIDOM_DOMImplementation::getInstance().createDocument("", "", {});
    ZBLIDOM_Parser(0).parse((m_root + "/logs/Performance_S.xml").c_str(), document);
    const ZBLIDOM_NodeList records = document.getElementsByTagName("RP");
    EXPECT_EQ(records.getLength(), kThreads * kRuns);
    std::set<int> whole;
    for (long i = 0; i < records.getLength(); ++i) {
        const ZBLIDOM_Element record(records.item(i));
        const int number = std::stoi(record.getAttribute("rN").c_str());
        const auto isFirst = [&record](const char* tag, const I18NString& name) {
            return ZBLIDOM_Element(record.getElementsByTagName(tag).item(0)).getAttribute("n") == name;
        };
        if (isFirst("C", nameOf(number)) && isFirst("CF", nameOf(number / 50))) whole.insert(number);
    }
    EXPECT_EQ(whole.size(), kThreads * std::size_t{kRuns});
}

} // namespace
