// The expander beside other ways to the same text. Every run is one-shot: templates are parsed, parameters and
// dictionaries filled and everything freed again inside the time.
#include "ExpanderBenchmarks.h"

#include <cstdio>
#include <exception>

#include <benchmark/benchmark.h>

#include "PlatformHooks.h"

int main(int argc, char** argv) {
    brindle_platform::overrideOption("General Options", "MultiValuesAllowed", "1");
    try {
        brindle_benchmark::RegisterQueryRuns();
        brindle_benchmark::RegisterPlainRuns();
        brindle_benchmark::RegisterDenseRuns();
        benchmark::Initialize(&argc, argv);
        if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
        benchmark::RunSpecifiedBenchmarks();
        benchmark::Shutdown();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "benchmark-expander: %s\n", failure.what());
        return 1;
    }
}
