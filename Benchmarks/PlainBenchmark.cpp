// 16 MiB of SQL with one block at its end: how fast text is that only has to be passed over and copied. "plain" has a
// quote, a comment mark or a protected '#' about every 20 bytes, "sparse" about every 200.
#include "ExpanderBenchmarks.h"

#include <cstdint>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>
#include <ctemplate/template.h>
#include <ctemplate/template_dictionary.h>

#include "AQM_I_MacroExpander.h"
#include "AQU_ParameterMapApp.h"

#include "Inputs.h"
#include "TableScan.h"

namespace brindle_benchmark {
namespace {

constexpr std::size_t kTextBytes = 16 << 20;
const std::string kValue = "the end";

I18NString ExpandWithBrindle(const I18NString& text) {
    AQU_ParameterMapApp parameters("_env", 0);
    parameters.Set("mark", ToText(kValue));
    const std::unique_ptr<AQU_I_ParameterAccessCoordinator> coordinator(AQU_I_ParameterAccessCoordinator::Create());
    coordinator->AddParameterMap(&parameters);
    AQM_I_MacroExpander expander;
    return expander.Expand(text, coordinator.get());
}

std::string ExpandWithCtemplate(const std::string& text) {
    ctemplate::TemplateDictionary dictionary("plain");
    dictionary.SetValue("mark", kValue);
    const std::unique_ptr<ctemplate::Template> parsed(
        ctemplate::Template::StringToTemplate(text, ctemplate::DO_NOT_STRIP));
    std::string result;
    parsed->Expand(&result, &dictionary);
    return result;
}

void CountBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kTextBytes));
}

void RegisterRuns(const std::string& figure, const std::string& lines) {
    const std::string sql = MakeSqlText(lines, kTextBytes);
    const auto marked = std::make_shared<const std::string>(sql + "#$mark#");
    const auto braced = std::make_shared<const std::string>(sql + "{{mark}}");
    const auto text = std::make_shared<const I18NString>(ToText(*marked));
    const std::string expected = sql + kValue;

    RequireSame(figure + "/brindle", ExpandWithBrindle(*text).bytes(), expected);
    RequireSame(figure + "/ctemplate", ExpandWithCtemplate(*braced), expected);
    RequireSame(figure + "/table scan", ExpandByTable(*marked, kValue), expected);

    benchmark::RegisterBenchmark((figure + "/brindle").c_str(), [=](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(ExpandWithBrindle(*text));
        CountBytes(state);
    });
    // The same from bytes that have yet to be checked and made a text.
    benchmark::RegisterBenchmark((figure + "/brindle from bytes").c_str(), [=](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(ExpandWithBrindle(ToText(*marked)));
        CountBytes(state);
    });
    benchmark::RegisterBenchmark((figure + "/ctemplate").c_str(), [=](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(ExpandWithCtemplate(*braced));
        CountBytes(state);
    });
    benchmark::RegisterBenchmark((figure + "/table scan").c_str(), [=](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(ExpandByTable(*marked, kValue));
        CountBytes(state);
    });
}

} // namespace

void RegisterPlainRuns() {
    RegisterRuns("plain", "plain-lines.sql");
    RegisterRuns("sparse", "sparse-lines.sql");
}

} // namespace brindle_benchmark
