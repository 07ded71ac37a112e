// The instrumentation in a place of its own: its clocks stand until a test moves them, one tick is one unit of time,
// and what the runs have recorded is read back from the file in a short form.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <regex>
#include <utility>

#include <gtest/gtest.h>

#include "PlatformHooks.h"

#include "AQE_AutoPerformance.h"
#include "AQE_PerfData.h"
#include "TarnPerformance.h"

class PerformanceFixture : public testing::Test {
protected:
    PerformanceFixture() {
        using namespace brindle_platform;
        if (mkdtemp(m_root.data()) == nullptr) std::abort();
        setProgramDirectory((m_root + "/bin").c_str()), setProcessId(77), setLogLevel("QueryEngine", 7);
        setPerformanceCounter([this] { return m_clock; }), setMillisClock([this] { return m_clock; });
        setTimeStamp([this](int form) { return form == 0 ? I18NString("S") : m_stamp; });
        setLogSink([this](const LogRecord& record) {
            m_log += std::to_string(record.level) + " " + record.text.c_str() + "\n";
        });
    }
    ~PerformanceFixture() override {
        using namespace brindle_platform;
        m_run.reset(), TarnPerformance::Terminate();
        setProgramDirectory(""), setPerformanceCounter(nullptr), setMillisClock(nullptr), setTimeStamp(nullptr);
        setLogSink(nullptr), setPerformanceCounterPresent(true), setProcessId({}), clearOverrides();
        clearLoggerThresholds(), clearLogLevels(), std::filesystem::remove_all(m_root);
    }

    // With a run that has one query, "q". Verbosity 0 without a threshold, 7 for 10000 and below, 3, 2, 1 for 20000,
    // 30000 and more.
    void Start(std::optional<int> threshold = 20000, const char* unitsPerSecond = "1000000000") {
        if (threshold) brindle_platform::setLoggerThreshold("Perf.QFS", *threshold);
        brindle_platform::overrideOption("General Options", "PerformanceTimeUnitFactor", unitsPerSecond);
        TarnPerformance::Initialize("tests");
        m_run = std::make_unique<AQE_PerfData>();
        m_run->RegisterQuery("q");
    }

    // Lets the time pass within a measurement.
    void Spend(int query, int component, int function, std::int64_t ticks) {
        const AQE_AutoPerformance guard(m_run.get(), query, component, function);
        m_clock += ticks;
    }

    static std::string Read(const std::string& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    // Ends run and instrumentation, and takes the file away. Each run is "name=total", then each component with its
    // time and, in brackets, its functions with time and calls, and its messages; then the queries in the same way.
    std::string TakeRuns(const std::string& path = "/logs/Performance_S.xml") {
        m_run.reset(), TarnPerformance::Terminate();
        std::string text = Read(m_root + path);
        std::filesystem::remove(m_root + path);
        const char* const rules[][2] = {
            {"[\t\n]|[^]*</ElementAndAttributeIndex>|</(R.|LMs|PerformanceData)>|<LMs>", ""},
            {R"(<RP n="(.*?)".*?><RS et="(.*?)" >)", "$1=$2"},
            {R"(<RQ n="(.*?)" et="(.*?)" >)", ";
        $1 = $2 "},
        {R"(<C n="(.*?)" et="(.*?)" >)", " $1=$2("},
            {R"(<CF n="(.*?)" et="(.*?)" nc="(.*?)" />)", " $1=$2x$3"},
            {R"(<LM><!\[CDATA\[(.*?)\]\]></LM>)", " '$1'"},
            {"</C>", ")"}};
        for (const auto& [form, shown] : rules)
            text = std::regex_replace(text, std::regex(form), shown);
        return text;
        }

        std::string TakeLog() { return std::exchange(m_log, ""); }

        std::unique_ptr<AQE_PerfData> m_run;
        std::string m_root = testing::TempDir() + "brindle-XXXXXX", m_log;
        std::int64_t m_clock = 1000;
        I18NString m_stamp = "then";
    };
