// brindle expand: the text with each macro block replaced by its value.
#include <memory>

#include <CLI/CLI.hpp>

#include "PlatformHooks.h"
#include "ZBLIDOM/ZBLIDOM_Helper.h"

#include "AQM_I_MacroExpander.h"

#include "Command.h"
#include "CommandLine.h"
#include "Files.h"
#include "MacroFailure.h"
#include "Parameters.h"
#include "RunRecord.h"

namespace brindle_tool {
namespace {

struct Options {
    std::string file = "-";
    std::string report;
    ParameterOptions parameters;
    bool performance = false;
};

EExitStatus Expand(const Options& options) {
    // The library reads the option at the first expansion of the process and never again.
    if (!options.report.empty()) {
        RequireAnotherFile(options.report, options.file);
        brindle_platform::overrideOption("QueryEngine", "GetMacroExpansionExecutionReport", "1");
    }

    RunRecord record(options.performance, "brindle expand");
    Parameters parameters(options.parameters);
    const Input input = ReadInput(options.file);
    record.SetFile(input.name);
    AQM_I_MacroExpander expander;
    const I18NString expanded = OrMacroFailure(input, parameters.GetTable(), [&] {
        const AQE_AutoPerformance measured = record.Measure(kExpansion);
        return expander.Expand(input.text, parameters.GetCoordinator());
    });
    {
        const AQE_AutoPerformance measured = record.Measure(kPrinting);
        if (!options.report.empty())
            WriteFile(options.report, ZBLIDOM_Helper::serialize(expander.GetExecutionReport()).bytes());
        WriteOutput(expanded.bytes());
    }
    record.End();
    return kSuccess;
}

} // namespace

Action DeclareExpand(CLI::App& parser) {
    const auto options = std::make_shared<Options>();
    AddFile(parser, options->file);
    AddParameterOptions(parser, options->parameters);
    AddText(parser, "--report", options->report, "FILE", "write what each block did to FILE, as XML")
        ->check(RequireName);
    AddPerformanceOption(parser, options->performance);
    return [options] { return Expand(*options); };
}

} // namespace brindle_tool
