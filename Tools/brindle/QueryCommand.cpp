// brindle query: expands a text, runs the statement on an SQLite database and prints the rows.
#include <memory>

#include <CLI/CLI.hpp>

#include "AQM_I_MacroExpander.h"

#include "Command.h"
#include "CommandLine.h"
#include "Database.h"
#include "Files.h"
#include "MacroFailure.h"
#include "Parameters.h"
#include "ResultFormat.h"
#include "RunRecord.h"

namespace brindle_tool {
namespace {

struct Options {
    std::string file = "-";
    std::string database;
    std::string format = FormatNames().front();
    ParameterOptions parameters;
    bool performance = false;
};

// The whole result as it is to be printed.
std::string Execute(const Options& options, const Input& expanded, RunRecord& record) {
    const AQE_AutoPerformance executing = record.Measure(kExecution);
    const Database database(options.database);
    Statement statement(database, expanded);
    const std::unique_ptr<ResultWriter> writer = MakeResultWriter(options.format);
    writer->SetColumns(statement.GetColumnNames());
    while (statement.Step()) {
        const AQE_AutoPerformance printing = record.Measure(kPrinting);
        writer->AddRow(statement.GetRow());
    }
    const AQE_AutoPerformance printing = record.Measure(kPrinting);
    return writer->TakeText();
}

EExitStatus Query(const Options& options) {
    RunRecord record(options.performance, "brindle query");
    Parameters parameters(options.parameters);
    const Input input = ReadInput(options.file);
    record.SetFile(input.name);
    const Input expanded = {input.name, OrMacroFailure(input, parameters.GetTable(), [&] {
                                const AQE_AutoPerformance measured = record.Measure(kExpansion);
                                return AQM_I_MacroExpander().Expand(input.text, parameters.GetCoordinator());
                            })};
    // Printed only now, so that a statement that fails at a late row leaves no half result.
    const std::string result = Execute(options, expanded, record);
    {
        const AQE_AutoPerformance measured = record.Measure(kPrinting);
        WriteOutput(result);
    }
    record.End();
    return kSuccess;
}

} // namespace

Action DeclareQuery(CLI::App& parser) {
    const auto options = std::make_shared<Options>();
    AddFile(parser, options->file);
    AddText(parser, "--database", options->database, "DB", "the SQLite database, which is only read")->required();
    AddText(parser, "--format", options->format, "FORMAT", "table (unless given), csv or json")
        ->option_text("FORMAT")
        ->check(OneOf(FormatNames()));
    AddParameterOptions(parser, options->parameters);
    AddPerformanceOption(parser, options->performance);
    return [options] { return Query(*options); };
}

} // namespace brindle_tool
