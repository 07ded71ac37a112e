// Delimited files, interning of strings and the dimension finder. The argument "--figure NAME" in front of all others
// makes the inputs of one figure only.
#include "ServicesBenchmarks.h"

#include <cstdio>
#include <exception>
#include <string_view>

#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    std::string_view figure;
    if (argc > 2 && argv[1] == std::string_view("--figure")) {
        figure = argv[2];
        argv[2] = argv[0];
        argc -= 2;
        argv += 2;
    }
    const auto isWanted = [figure](std::string_view name) { return figure.empty() || figure == name; };
    try {
        if (isWanted("csv")) brindle_benchmark::RegisterCsvRuns();
        if (isWanted("intern")) brindle_benchmark::RegisterStringBucketRuns();
        if (isWanted("dimensions")) brindle_benchmark::RegisterDimensionRuns();
        benchmark::Initialize(&argc, argv);
        if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
        benchmark::RunSpecifiedBenchmarks();
        benchmark::Shutdown();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "benchmark-services: %s\n", failure.what());
        return 1;
    }
}
