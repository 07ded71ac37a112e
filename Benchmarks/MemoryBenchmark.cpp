// The peak heap of the second of two equal expansions in a process that is warm. Each row is a JSON object on a line of
// its own: name, size, and the peak in bytes.
//
// The peak is counted from what was live after a small expansion, the caller's text apart: what the first of the two
// calls leaves behind in pools and buffers counts, as do the parameters, the coordinator, the expander and the result.
#include <cstdio>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "AQM_I_MacroExpander.h"
#include "AQU_ParameterMapApp.h"

#include "CountedHeap.h"
#include "Inputs.h"

namespace brindle_benchmark {
namespace {

I18NString Expand(const I18NString& text) {
    AQU_ParameterMapApp parameters("_env", 0);
    parameters.Set("value", "value");
    const std::unique_ptr<AQU_I_ParameterAccessCoordinator> coordinator(AQU_I_ParameterAccessCoordinator::Create());
    coordinator->AddParameterMap(&parameters);
    return AQM_I_MacroExpander().Expand(text, coordinator.get());
}

void Measure(const std::string& name, std::size_t size, const I18NString& text, const std::string& expected) {
    const std::size_t baseline = GetLiveBytes();
    RequireSame(name, Expand(text).bytes(), expected);
    ResetPeak();
    const I18NString result = Expand(text);
    const std::size_t peak = GetPeakBytes() - baseline;
    if (result.bytes().size() != expected.size()) throw std::runtime_error(name + ": the second output differs");
    std::printf(R"({"name": "%s", "size": %zu, "peak": %zu})"
                "\n",
                name.c_str(), size, peak);
}

void MeasurePlain(const std::string& name, const std::string& text) { Measure(name, text.size(), ToText(text), text); }

void MeasureTerms(std::size_t count) {
    const std::string term = "$value + ";
    const std::string filled = "value";
    const std::string text = "#" + Repeat(term, (count - 1) * term.size()) + "$value#";
    Measure("terms", count, ToText(text), Repeat(filled, count * filled.size()));
}

} // namespace
} // namespace brindle_benchmark

int main() {
    using namespace brindle_benchmark;
    try {
        Expand("a #$value# of #sq($value)#");
        for (const std::size_t megabytes : {1u, 4u, 16u}) {
            const std::size_t bytes = megabytes << 20;
            MeasurePlain("no blocks ascii", MakeSqlText("plain-lines.sql", bytes));
            MeasurePlain("no blocks non-ascii", Repeat("-- größere Länge überall\n", bytes));
        }
        const std::string sql = MakeSqlText("plain-lines.sql", 16 << 20);
        Measure("one block at the end", sql.size(), ToText(sql + "#$value#"), sql + "value");
        for (const std::size_t count : {50'000u, 100'000u, 200'000u})
            MeasureTerms(count);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "benchmark-memory: %s\n", failure.what());
        return 1;
    }
}
