// Delimited files, interning of strings and the dimension finder. The argument "--figure NAME" in front of all others
// makes the inputs of one figure only.
#include "ServicesBenchmarks.h"

#include "RunBenchmarks.h"

int main(int argc, char** argv) {
    return brindle_benchmark::RunBenchmarks(argc, argv, [](std::string_view figure) {
        if (figure.empty() || figure == "csv") brindle_benchmark::RegisterCsvRuns();
        if (figure.empty() || figure == "intern") brindle_benchmark::RegisterStringBucketRuns();
        if (figure.empty() || figure == "dimensions") brindle_benchmark::RegisterDimensionRuns();
    });
}
