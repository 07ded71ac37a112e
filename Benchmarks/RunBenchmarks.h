// What the main functions of the programs on Google Benchmark share.
#pragma once

#include <cstdio>
#include <exception>
#include <string_view>

#include <benchmark/benchmark.h>

namespace brindle_benchmark {

// Has the runs of one figure registered, or with an empty name those of all, then runs what the arguments choose. The
// argument "--figure NAME" in front of all others names the figure. Answers the exit status; what registering throws is
// shown.
template <class RegisterRuns>
int RunBenchmarks(int argc, char** argv, const RegisterRuns& registerRuns) {
    std::string_view figure;
    if (argc > 2 && argv[1] == std::string_view("--figure")) {
        figure = argv[2];
        argv[2] = argv[0];
        argc -= 2;
        argv += 2;
    }
    try {
        registerRuns(figure);
        benchmark::Initialize(&argc, argv);
        if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
        benchmark::RunSpecifiedBenchmarks();
        benchmark::Shutdown();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s: %s\n", argv[0], failure.what());
        return 1;
    }
    return 0;
}

} // namespace brindle_benchmark
