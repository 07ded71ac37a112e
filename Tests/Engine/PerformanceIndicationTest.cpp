#include <limits>
#include <list>

#include <gtest/gtest.h>

#include "ZBLCore/ZBLThread.h"
#include "zblipf2/LogPerfIndication.h"

#include "AQE_Performance.h"

#include "Support/Directory.h"
#include "Support/LogLines.h"

namespace {

using namespace brindle_platform;

constexpr int kLowest = std::numeric_limits<int>::min(), kHighest = std::numeric_limits<int>::max();

struct PerformanceIndication : testing::Test, brindle_test::Directory, brindle_test::LogLines {
    PerformanceIndication() {
        setMillisClock([this] { return m_clock; });
    }

    // How many records a guard of the level leaves in the log. It lasts 25 milliseconds, then `during` is called.
    std::size_t Guarded(AQE_IPFPerformance* owner, int level, const std::function<void()>& during) {
        I18NString classId = "C", methodId = "M", session = "S", request = "R", data = "before";
        Take();
        {
            const AQE_Performance guard(owner, level, classId, methodId, session, request, data);
            m_clock += 25, data = "after", during();
        }
        return m_lines.size();
    }

    std::int64_t m_clock = 100;
};

TEST_F(PerformanceIndication, LoggerIsEnabledFromItsThresholdOn) {
    const auto check = [](const char* threshold, int lowest) {
        overrideOption("Instrumentation", "Perf.DAM.part", threshold);
        const AQE_IPFPerformance owner("part");
        EXPECT_TRUE(owner.isEnabled(lowest) && (lowest == kLowest || !owner.isEnabled(lowest - 1))) << threshold;
    };
    check("", kHighest), check("-2147483648", kLowest), check("-2147483647", 10000), check("10000", 10000);
    check("10001", 20000), check("50000", 50000), check("50001", kHighest);
}

TEST_F(PerformanceIndication, GuardSendsAtItsStartAndAtItsEnd) {
    const auto set = [](int threshold) { setLoggerThreshold("Perf.DAM.VKE", threshold); };
    set(30000);
    AQE_IPFPerformance owner(AQE_IPFPerformance::GetDefaultComponent()), without("unknown");
    EXPECT_EQ(Guarded(&owner, 30000, [] {}), 2u);
    const std::string who = " component=\"VKE\" level=30000 thread=" + std::to_string(ZBLThread::currentThreadId());
    const std::string what = R"( class="C" method="M" session="S" request="R" data=)", name = "Perf.DAM.VKE 7 ";
    EXPECT_EQ(m_lines, (brindle_test::Lines{name + "ENTER" + who + " elapsedMs=0" + what + "\"before\"",
                                            name + "RETURN" + who + " elapsedMs=25" + what + "\"after\""}));
    EXPECT_EQ(Guarded(&owner, 29999, [] {}) + Guarded(nullptr, kHighest, [] {}), 0u);
    EXPECT_EQ(Guarded(&without, kHighest, [] {}), 0u) << "enabled, but with nothing to send to";
    EXPECT_EQ(Guarded(&owner, 30000, [&] { set(40000); }), 2) << "not synchronised";
    EXPECT_EQ(Guarded(&owner, 30000, [&] { owner.SyncIPFLogLevel(); }), 1);
    EXPECT_EQ(Guarded(&owner, 30000, [&] { set(10000), owner.SyncIPFLogLevel(); }), 0) << "off at the start";
}

TEST_F(PerformanceIndication, ASinkTakesWhatWouldBeLoggedAndMayFail) {
    setLoggerThreshold("Perf.DAM.VKE", 30000);
    AQE_IPFPerformance owner(AQE_IPFPerformance::GetDefaultComponent());
    std::list<LogPerfIndication> kept;
    setIndicationSink([&kept](const LogPerfIndication& indication) { throw &kept.emplace_back(indication); });
    EXPECT_EQ(Guarded(&owner, 30000, [] {}), 0u);
    std::string sent;
    for (const LogPerfIndication& indication : kept)
        sent += (indication.getStatus() + " " + std::to_string(indication.getElapsedMillis()).c_str() + " ").bytes();
    EXPECT_EQ(sent, "ENTER 0 RETURN 25 ") << "of copies that outlive the guard and its counters";
    setIndicationSink(nullptr);
    EXPECT_EQ(Guarded(&owner, 30000, [] {}), 2u);
}

} // namespace
