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

namespace brindle_tool {
namespace {

struct Options {
    std::string file = "-";
    std::string report;
    ParameterOptions parameters;
};

EExitStatus Expand(const Options& options) {
    // The library reads the option at the first expansion of the process and never again.
    if (!options.report.empty())
        brindle_platform::overrideOption("QueryEngine", "GetMacroExpansionExecutionReport", "1");

    Parameters parameters(options.parameters);
    const Input input = ReadInput(options.file);
    AQM_I_MacroExpander expander;
    const I18NString expanded = OrMacroFailure(
        input, parameters.GetTable(), [&] { return expander.Expand(input.text, parameters.GetCoordinator()); });

    if (!options.report.empty())
        WriteFile(options.report, ZBLIDOM_Helper::serialize(expander.GetExecutionReport()).bytes());
    WriteOutput(expanded.bytes());
    return kSuccess;
}

} // namespace

Action DeclareExpand(CLI::App& parser) {
    const auto options = std::make_shared<Options>();
    AddFile(parser, options->file);
    AddParameterOptions(parser, options->parameters);
    AddText(parser, "--report", options->report, "FILE", "write what each block did to FILE, as XML")
        ->check([](const std::string& file) { return file == "-" ? "expected a file, found '-'" : ""; });
    return [options] { return Expand(*options); };
}

} // namespace brindle_tool
