// What a measuring guard costs: one that measures beside two readings of the clock that it reads, one that is off
// beside an empty step of a loop. Before anything is timed, a counted run must have its calls in the record, and must
// not have touched the heap between its guards' starts and their ends.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include <benchmark/benchmark.h>

#include "PlatformHooks.h"
#include "PlatformOs.h"

#include "AQE_AutoPerformance.h"
#include "AQE_PerfData.h"
#include "AQE_Performance.h"
#include "AQE_ResourcePerformance.h"
#include "TarnPerformance.h"

#include "CountedHeap.h"
#include "RunBenchmarks.h"
#include "Support/TemporaryDirectory.h"

namespace brindle_benchmark {
namespace {

namespace fs = std::filesystem;

void RunNested(AQE_PerfData& data, int count) {
    const AQE_AutoPerformance outer(&data, 0, 1, 0);
    for (int i = 0; i < count; ++i) {
        const AQE_AutoPerformance guard(&data, 0, 0, 0);
        benchmark::DoNotOptimize(&guard);
    }
}

void CheckRecord(const fs::path& directory) {
    constexpr int kCalls = 12345;
    TarnPerformance::SetLogDir(directory.c_str());
    {
        AQE_PerfData data;
        data.RegisterQuery("q");
        ResetPeak();
        const std::size_t before = GetLiveBytes();
        RunNested(data, kCalls);
        if (GetPeakBytes() != before || GetLiveBytes() != before) throw std::runtime_error("a guard used the heap");
    }
    std::ifstream stream(TarnPerformance::GetFileName().c_str());
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    for (const std::string call : {"<CF n=\"sqlInitialize\"", "nc=\"12345\"", "<CF n=\"LoadData\""})
        if (text.find(call) == text.npos) throw std::runtime_error("the record lacks " + call);
}

void EmptyStep(benchmark::State& state) {
    int step = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(++step);
}

void ClockTwice(benchmark::State& state) {
    for (auto _ : state) {
        LARGE_INTEGER begin, end;
        QueryPerformanceCounter(&begin);
        benchmark::DoNotOptimize(begin);
        QueryPerformanceCounter(&end);
        benchmark::DoNotOptimize(end);
    }
}

// With a caller around it, as guards mostly have.
void Enabled(benchmark::State& state) {
    AQE_PerfData data;
    data.RegisterQuery("q");
    const AQE_AutoPerformance outer(&data, 0, 1, 0);
    for (auto _ : state) {
        const AQE_AutoPerformance guard(&data, 0, 0, 0);
        benchmark::DoNotOptimize(&guard);
    }
}

void EnabledByPool(benchmark::State& state) {
    AQU_ResourcePool pool;
    AQE_ResourcePerformance::Create(&pool)->RegisterQuery("q");
    const AQE_AutoPerformance outer(&pool, 0, 1, 0);
    for (auto _ : state) {
        const AQE_AutoPerformance guard(&pool, 0, 0, 0);
        benchmark::DoNotOptimize(&guard);
    }
}

// The compiler must not see that there is nothing to do.
template <class Source>
void Disabled(benchmark::State& state) {
    Source* source = nullptr;
    int step = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(source);
        benchmark::DoNotOptimize(++step);
        const AQE_AutoPerformance guard(source, 0, 0, 0);
    }
}

void IndicationOff(benchmark::State& state) {
    AQE_IPFPerformance owner("benchmark");
    AQE_IPFPerformance* source = &owner;
    const I18NString text = "text";
    int step = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(source);
        benchmark::DoNotOptimize(++step);
        const AQE_Performance guard(source, 30000, text, text, text, text, text);
    }
}

void Register() {
    benchmark::RegisterBenchmark("guard/empty step", EmptyStep);
    benchmark::RegisterBenchmark("guard/clock twice", ClockTwice);
    benchmark::RegisterBenchmark("guard/enabled", Enabled);
    benchmark::RegisterBenchmark("guard/enabled by pool", EnabledByPool);
    benchmark::RegisterBenchmark("guard/null data", Disabled<AQE_PerfData>);
    benchmark::RegisterBenchmark("guard/null pool", Disabled<AQU_ResourcePool>);
    benchmark::RegisterBenchmark("guard/indication off", IndicationOff);
}

} // namespace
} // namespace brindle_benchmark

int main(int argc, char** argv) {
    using namespace brindle_benchmark;
    brindle_platform::setLoggerThreshold("Perf.QFS", 20000);
    TarnPerformance::Initialize("benchmark");
    std::optional<brindle_test::TemporaryDirectory> records; // runs write there too
    const int status = RunBenchmarks(argc, argv, [&records](std::string_view) {
        CheckRecord(records.emplace().Path());
        Register();
    });
    TarnPerformance::Terminate();
    return status;
}
