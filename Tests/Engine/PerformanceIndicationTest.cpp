#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "PlatformHooks.h"
#include "ZBLCore/ZBLThread.h"
#include "zblipf2/LogTypedLogger.h"

#include "AQE_Performance.h"

namespace {

using namespace brindle_platform;

constexpr int kLowest = std::numeric_limits<int>::min(), kHighest = std::numeric_limits<int>::max();

class PerformanceIndication : public testing::Test {
protected:
    PerformanceIndication() {
        setMillisClock([this] { return m_clock; });
        setIndicationSink([this](const LogPerfIndication& sent) {
            m_sent += std::string(sent.getStatus().bytes()) + " " + std::to_string(sent.getElapsedMillis()) + " ";
        });
    }
    ~PerformanceIndication() override {
        setMillisClock(nullptr), setIndicationSink(nullptr), setLogSink(nullptr);
        clearLoggerThresholds(), clearOverrides();
    }

    // What a guard of the level sends if `during` is called within it, 25 milliseconds after the start.
    std::string Guarded(
        AQE_IPFPerformance* owner, int level, const std::function<void()>& during = [] {}) {
        I18NString classId = "C", methodId = "M", session = "S", request = "R", data = "before";
        {
            const AQE_Performance guard(owner, level, classId, methodId, session, request, data);
            m_clock += 25;
            data = "after";
            during();
        }
        return std::exchange(m_sent, "");
    }

    std::int64_t m_clock = 100;
    std::string m_sent;
};

TEST_F(PerformanceIndication, LoggerIsEnabledFromItsThresholdOn) {
    for (const auto& [threshold, lowest] : {std::pair(std::optional<int>(), kHighest),
                                            {kLowest, kLowest},
                                            {kLowest + 1, 10000},
                                            {10000, 10000},
                                            {10001, 20000},
                                            {30001, 40000},
                                            {50000, 50000},
                                            {50001, kHighest}}) {
        if (threshold) overrideOption("Instrumentation", "Perf.DAM.part", std::to_string(*threshold).c_str());
        const AQE_IPFPerformance owner("part");
        EXPECT_TRUE(owner.isEnabled(lowest));
        EXPECT_TRUE(lowest == kLowest || !owner.isEnabled(lowest - 1)) << threshold.value_or(0);
    }
}

TEST_F(PerformanceIndication, GuardSendsAtItsStartAndAtItsEnd) {
    const auto set = [](int threshold) { setLoggerThreshold("Perf.DAM.VKE", threshold); };
    set(30000);
    AQE_IPFPerformance owner("VKE"), without("unknown");
    EXPECT_EQ(Guarded(&owner, 30000), "ENTER 0 RETURN 25 ");
    EXPECT_EQ(Guarded(&owner, 29999) + Guarded(nullptr, kHighest), "");
    EXPECT_EQ(Guarded(&without, kHighest), "") << "enabled, but with nothing to send to";
    EXPECT_EQ(Guarded(&owner, 30000, [&] { set(40000); }), "ENTER 0 RETURN 25 ") << "not synchronised";
    EXPECT_EQ(Guarded(&owner, 30000, [&] { owner.SyncIPFLogLevel(); }), "ENTER 0 ");
    EXPECT_EQ(Guarded(&owner, 30000, [&] { set(10000), owner.SyncIPFLogLevel(); }), "") << "off at the start";
}

TEST_F(PerformanceIndication, WithoutASinkOfItsOwnItIsARecordOfTheLog) {
    setIndicationSink(nullptr);
    setLogSink([this](const LogRecord& record) {
        m_sent += (record.name + " " + std::to_string(record.level).c_str() + " " + record.text + "\n").bytes();
    });
    setLoggerThreshold("Perf.DAM.VKE", 20000);
    AQE_IPFPerformance owner(AQE_IPFPerformance::GetDefaultComponent());
    const std::string who = " component=\"VKE\" level=20000 thread=" + std::to_string(ZBLThread::currentThreadId());
    const std::string what = R"( class="C" method="M" session="S" request="R" data=)", name = "Perf.DAM.VKE 7 ";
    EXPECT_EQ(Guarded(&owner, 20000), name + "ENTER" + who + " elapsedMs=0" + what + "\"before\"\n" + //
                                          name + "RETURN" + who + " elapsedMs=25" + what + "\"after\"\n");
}

} // namespace
