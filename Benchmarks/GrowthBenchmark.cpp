// How the time of an expansion grows while its input doubles three times. Each row is a JSON object on a line of its
// own: name, unit, the four sizes, and for each the least processor time of several runs in seconds.
//
// The sizes take turns, so that a slow moment of the machine hits all of them alike, and none finds its input in the
// caches because it ran just before. Parameters are filled outside the time; looking them up is inside.
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <exception>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "PlatformHooks.h"

#include "AQM_I_MacroExpander.h"
#include "AQU_ParameterMapApp.h"

#include "GrowthCalls.h"
#include "Inputs.h"

namespace brindle_benchmark {
namespace {

constexpr std::size_t kSteps = 4;
constexpr int kLeastRounds = 5;
constexpr int kMostRounds = 25;
// Rounds go on up to this time, for the rows whose runs are short.
constexpr double kEnoughSeconds = 1.0;

double ProcessorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

class PreparedCall {
public:
    PreparedCall(const std::string& name, const GrowthCall& call) : m_text(ToText(call.text)) {
        for (const I18NString& element : call.list)
            m_parameters.Set("list", element);
        m_parameters.Set("value", ToText(call.value));
        m_coordinator->AddParameterMap(&m_parameters);
        RequireSame(name, Run().bytes(), call.expected);
    }

    double MeasureOnce() {
        const double start = ProcessorSeconds();
        Run();
        return ProcessorSeconds() - start;
    }

private:
    I18NString Run() { return AQM_I_MacroExpander().Expand(m_text, m_coordinator.get()); }

    I18NString m_text;
    AQU_ParameterMapApp m_parameters{"_env", 0};
    std::unique_ptr<AQU_I_ParameterAccessCoordinator> m_coordinator{AQU_I_ParameterAccessCoordinator::Create()};
};

void Measure(const GrowthRow& row, bool ascii) {
    const std::string name = std::string(row.name) + (ascii ? " ascii" : " non-ascii");
    const std::size_t first = row.countsElements ? 125'000 : 1'000'000;
    std::vector<std::size_t> sizes;
    std::vector<std::unique_ptr<PreparedCall>> calls;
    for (std::size_t step = 0; step < kSteps; ++step) {
        sizes.push_back(first << step);
        calls.push_back(std::make_unique<PreparedCall>(name, row.make(sizes.back(), ascii)));
    }

    std::vector<double> least(kSteps, std::numeric_limits<double>::max());
    const double start = ProcessorSeconds();
    for (int round = 0; round < kMostRounds; ++round) {
        if (round >= kLeastRounds && ProcessorSeconds() - start > kEnoughSeconds) break;
        for (std::size_t step = 0; step < kSteps; ++step)
            least[step] = std::min(least[step], calls[step]->MeasureOnce());
    }

    std::printf(R"({"name": "%s", "unit": "%s", "sizes": [%zu, %zu, %zu, %zu], "seconds": [%.6f, %.6f, %.6f, %.6f]})"
                "\n",
                name.c_str(), row.countsElements ? "elements" : "bytes", sizes[0], sizes[1], sizes[2], sizes[3],
                least[0], least[1], least[2], least[3]);
    std::fflush(stdout);
}

} // namespace
} // namespace brindle_benchmark

// Without arguments all rows; otherwise those whose names are given.
int main(int argc, char** argv) {
    using namespace brindle_benchmark;
    brindle_platform::overrideOption("General Options", "MultiValuesAllowed", "1");
    const std::vector<std::string> wanted(argv + 1, argv + argc);
    try {
        for (const GrowthRow& row : GetGrowthRows()) {
            if (!wanted.empty() && std::find(wanted.begin(), wanted.end(), row.name) == wanted.end()) continue;
            Measure(row, true);
            Measure(row, false);
        }
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "benchmark-growth: %s\n", failure.what());
        return 1;
    }
}
