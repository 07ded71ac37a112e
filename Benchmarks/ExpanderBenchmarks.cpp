// The expander beside other ways to the same text. Every run is one-shot: templates are parsed, parameters and
// dictionaries filled and everything freed again inside the time.
#include "ExpanderBenchmarks.h"

#include <cstdio>
#include <exception>
#include <string_view>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include "PlatformHooks.h"

int main(int argc, char** argv) {
    char* const program = argv[0];
    // The allocator hands large blocks back to the system, and whoever needs them next pays for fresh pages. With
    // --keep-memory it doesn't, which leaves the work itself.
    if (argc > 1 && std::string_view(argv[1]) == "--keep-memory") {
        mallopt(M_MMAP_THRESHOLD, 1 << 30);
        mallopt(M_TRIM_THRESHOLD, 1 << 30);
        *++argv = program;
        --argc;
    }
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
