#include <list>
#include <tuple>

#include "AQE_ResourcePerformance.h"

#include "Engine/PerformanceFixture.h"

namespace {

using ELogLevel = AUT_I_LogFile::ELogLevel;
using PerformanceData = PerformanceFixture;

TEST_F(PerformanceData, SelfTimeIsBookedToTheFunctionAndItsQuery) {
    Start();
    for (const auto& [name, query] : {std::pair("b", 1), {"q", 0}, {"b", 1}})
        EXPECT_EQ(m_run->RegisterQuery(name), query);
    {
        const AQE_AutoPerformance outer(m_run.get(), 0, 0, 5);
        m_clock += 7;
        Spend(1, 1, 0, 3);  // of another query, but off the caller's
        Spend(0, 0, 5, 20); // the same function: counted twice, no time double
    }
    Spend(0, 0, 8, 100);
    const std::string dmb = " DMB=3( LoadData=3x1)", uda = " UDA=127( sqlAOpen=27x2 sqlGenericOther=100x1)";
    EXPECT_EQ(TakeRuns(), "Report=130" + dmb + uda + "; q=127" + uda + "; b=3" + dmb);
}

TEST_F(PerformanceData, NamesAreEnteredOnceAndForAllRuns) {
    Start();
    EXPECT_EQ(TarnPerformance::RegisterComponent(nullptr, "x"), -1);
    EXPECT_EQ(TarnPerformance::RegisterComponentFunction(nullptr, 1, "x"), -1);
    // The empty name is never found.
    for (const auto& [name, number] : {std::pair("MDDS", 2), {"", 4}, {"", 5}, {"x", 6}, {"x", 6}})
        EXPECT_EQ(TarnPerformance::RegisterComponent(name), number);
    using Row = std::tuple<int, const char*, int>;
    for (const auto& [component, name, number] : {Row(0, "sqlStart", 3),
                                                  {6, "f", 0},
                                                  {6, "g", 1},
                                                  {6, "f", 0},
                                                  {65535, "f", 0},
                                                  {-1, "f", -1},
                                                  {65536, "f", -1},
                                                  {1, "x", 1}})
        EXPECT_EQ(TarnPerformance::RegisterComponentFunction(component, name), number);
    Start();
    EXPECT_EQ(TarnPerformance::RegisterComponent("y"), 4) << "a new start forgets all but the built-in names";
}

// The summary is made before anything is registered, the queries before or after: each must be long enough.
TEST_F(PerformanceData, TablesGrowWithWhatIsRegistered) {
    Start();
    TarnPerformance::RegisterComponent("late");
    TarnPerformance::RegisterComponentFunction(4, "f");
    Spend(m_run->RegisterQuery("r"), 4, 0, 1);
    TarnPerformance::RegisterComponent("unseen");
    TarnPerformance::RegisterComponentFunction(m_run.get(), 5, "g"); // of a component that the run doesn't have
    Spend(0, 5, 0, 1);
    EXPECT_EQ(TakeLog(), "7 Performance internal error: Component ID5 is not registered.\n");
    for (const auto& [name, number, function] : {std::tuple("unseen", 5, "g"), {"UDA", 0, "sqlStart"}}) {
        TarnPerformance::RegisterComponent(m_run.get(), name); // the second shrinks nothing
        TarnPerformance::RegisterComponentFunction(m_run.get(), number, function);
    }
    Spend(0, 5, 0, 2), Spend(1, 0, 8, 4);
    m_run->AddProviderMessage(0, 5, ELogLevel(1), "m");
    const std::string rest = " late=1( f=1x1) UDA=4( sqlGenericOther=4x1)";
    EXPECT_EQ(TakeRuns(), "Report=7 unseen=2( g=2x1)" + rest + "; q=2 unseen=2( g=2x1 'm'); r=5" + rest);
}

TEST_F(PerformanceData, AnUnregisteredNumberIsLoggedAndNotMeasured) {
    Start();
    using Row = std::tuple<int, int, int, const char*>;
    for (const auto& [query, component, function, problem] :
         {Row(1, 9, 9, "Query ID 1 is not registered."), Row(-1, 0, 0, "Query ID -1 is not registered."),
          Row(0, 4, 9, "Component ID4 is not registered."), Row(0, -1, 0, "Component ID-1 is not registered."),
          Row(0, 1, 1, "Function ID1 is not registered for provider DMB"),
          Row(0, 3, -1, "Function ID-1 is not registered for provider BAPI")}) {
        const AQE_AutoPerformance guard(m_run.get(), query, component, function);
        EXPECT_EQ(TakeLog(), "7 Performance internal error: " + std::string(problem) + "\n");
        EXPECT_FALSE(m_run->IsBeingInstrumented());
    }
}

TEST_F(PerformanceData, TheFiftyFirstNestedGuardMeasuresNothing) {
    Start();
    std::list<AQE_AutoPerformance> guards;
    for (int depth = 1; depth <= 60; ++depth, ++m_clock)
        guards.emplace_back(m_run.get(), 0, depth > 50 ? 1 : 2, 0);
    for (; !guards.empty(); ++m_clock)
        guards.pop_back();
    EXPECT_EQ(TakeRuns() + TakeLog(), "Report=119 MDDS=119( MDDSDoRequest=119x50)");
}

TEST_F(PerformanceData, GuardsThatOutliveTheirDataTouchNothing) {
    Start();
    std::list<AQE_AutoPerformance> guards;
    for (const int component : {0, 1})
        guards.emplace_back(m_run.get(), 0, component, 0);
    Spend(0, 0, 3, 5);
    m_run.reset();
    bool isRead = false;
    brindle_platform::setPerformanceCounter([&] { return isRead = true, m_clock; });
    guards.clear();
    EXPECT_FALSE(isRead) << "the clock, which every end reads first";
    const std::string text = "Performance internal Error: Performance object is destructed while being instrumented.";
    // The message of "DMB" isn't shown: it has no finished call.
    EXPECT_EQ(TakeLog() + TakeRuns(), "1 " + text + "\nReport=0 UDA=5( sqlStart=5x1 '" + text + "')");
}

TEST_F(PerformanceData, VerbosityDecidesWhichMessagesAreKept) {
    const std::string all = " MDDSDoRequest=1x1 '0' '1' '2' '3'";
    for (const auto& [threshold, kept] : {std::pair(50000, std::string(" '0' '1'")),
                                          {30000, " '0' '1' '2'"},
                                          {20000, all},
                                          {10000, all + " '6' '7' '17'"}}) {
        Start(threshold), Spend(0, 2, 0, 1);
        for (const int level : {0, 1, 2, 3, 6, 7, 17})
            for (const auto& [query, component] : {std::pair(0, 2), {1, 2}, {-1, 2}, {0, 4}, {0, -1}})
                m_run->AddProviderMessage(query, component, ELogLevel(level), std::to_string(level).c_str());
        EXPECT_EQ(TakeRuns(), "Report=1 MDDS=1(" + kept + ")");
    }
}

TEST_F(PerformanceData, ThePoolHoldsTheDataOfTheRun) {
    Start();
    AQU_ResourcePool strange, pool;
    strange.AddResourceItem(8, new AQU_ResourceItem);
    const auto measure = [&](AQU_ResourcePool* from) {
        AQE_ResourcePerformance::AddProviderMessage(from, 0, 2, ELogLevel(1), "m");
        const AQE_AutoPerformance guard(from, 0, 2, 0);
        m_clock += 6;
        return AQE_ResourcePerformance::IsBeingInstrumented(from);
    };
    for (AQU_ResourcePool* const empty : {&pool, &strange, static_cast<AQU_ResourcePool*>(nullptr)})
        EXPECT_FALSE(AQE_ResourcePerformance::Get(empty) != nullptr || measure(empty));
    AQE_ResourcePerformance::Create(&pool)->RegisterQuery("q");
    EXPECT_TRUE(measure(&pool));
    pool.RemoveResourceItem(8, pool.GetResourceItem(8, 0));
    m_run.reset(AQE_ResourcePerformance::Create(nullptr));
    EXPECT_EQ(TakeRuns() + TakeLog(), "Report=6 MDDS=6( MDDSDoRequest=6x1 'm')Report=0Report=0");
}

} // namespace
