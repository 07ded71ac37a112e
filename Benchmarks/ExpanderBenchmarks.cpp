// The expander beside other ways to the same text. Every run is one-shot: templates are parsed, parameters and
// dictionaries filled and everything freed again inside the time.
#include "ExpanderBenchmarks.h"

#include "PlatformHooks.h"

#include "RunBenchmarks.h"

int main(int argc, char** argv) {
    brindle_platform::overrideOption("General Options", "MultiValuesAllowed", "1");
    return brindle_benchmark::RunBenchmarks(argc, argv, [](std::string_view) {
        brindle_benchmark::RegisterQueryRuns();
        brindle_benchmark::RegisterPlainRuns();
        brindle_benchmark::RegisterDenseRuns();
    });
}
