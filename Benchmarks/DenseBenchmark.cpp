// 1 MiB of nothing but the block "#$param#" and a comma: what one site costs. The peers' texts are as many sites in
// their own notation, "{{param}}," and "{param},".
#include "ExpanderBenchmarks.h"

#include <memory>
#include <string>

#include <benchmark/benchmark.h>
#include <ctemplate/template.h>
#include <ctemplate/template_dictionary.h>
#include <fmt/args.h>
#include <fmt/format.h>

#include "AQM_I_MacroExpander.h"
#include "AQU_ParameterMapApp.h"

#include "Inputs.h"

namespace brindle_benchmark {
namespace {

constexpr std::size_t kTextBytes = 1 << 20;
const std::string kSite = "#$param#,";
const std::string kValue = "value";

I18NString ExpandWithBrindle(const std::string& text) {
    AQU_ParameterMapApp parameters("_env", 0);
    parameters.Set("param", ToText(kValue));
    const std::unique_ptr<AQU_I_ParameterAccessCoordinator> coordinator(AQU_I_ParameterAccessCoordinator::Create());
    coordinator->AddParameterMap(&parameters);
    AQM_I_MacroExpander expander;
    return expander.Expand(ToText(text), coordinator.get());
}

std::string ExpandWithCtemplate(const std::string& text) {
    ctemplate::TemplateDictionary dictionary("dense");
    dictionary.SetValue("param", kValue);
    const std::unique_ptr<ctemplate::Template> parsed(
        ctemplate::Template::StringToTemplate(text, ctemplate::DO_NOT_STRIP));
    std::string result;
    parsed->Expand(&result, &dictionary);
    return result;
}

std::string ExpandWithFmt(const std::string& text) {
    return fmt::format(fmt::runtime(text), fmt::arg("param", kValue));
}

template <class Expand>
void Register(const char* run, std::size_t sites, const std::string& text, Expand expand) {
    benchmark::RegisterBenchmark(run, [=](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(expand(text));
        state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(sites));
        state.counters["sites"] = static_cast<double>(sites);
    });
}

} // namespace

void RegisterDenseRuns() {
    const std::size_t sites = kTextBytes / kSite.size();
    const auto repeatSite = [sites](const std::string& site) { return Repeat(site, sites * site.size()); };
    const std::string text = repeatSite(kSite);
    const std::string braced = repeatSite("{{param}},");
    const std::string format = repeatSite("{param},");
    const std::string expected = repeatSite(kValue + ",");

    RequireSame("dense/brindle", ExpandWithBrindle(text).bytes(), expected);
    RequireSame("dense/ctemplate", ExpandWithCtemplate(braced), expected);
    RequireSame("dense/fmt", ExpandWithFmt(format), expected);

    Register("dense/brindle", sites, text, ExpandWithBrindle);
    Register("dense/ctemplate", sites, braced, ExpandWithCtemplate);
    Register("dense/fmt", sites, format, ExpandWithFmt);
}

} // namespace brindle_benchmark
