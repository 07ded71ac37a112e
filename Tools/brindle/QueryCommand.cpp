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

namespace brindle_tool {
namespace {

struct Options {
    std::string file = "-";
    std::string database;
    std::string format = FormatNames().front();
    ParameterOptions parameters;
};

EExitStatus Query(const Options& options) {
    Parameters parameters(options.parameters);
    const Input input = ReadInput(options.file);
    const Input expanded = {input.name, OrMacroFailure(input, parameters.GetTable(), [&] {
                                return AQM_I_MacroExpander().Expand(input.text, parameters.GetCoordinator());
                            })};

    const Database database(options.database);
    Statement statement(database, expanded);
    const std::unique_ptr<ResultWriter> writer = MakeResultWriter(options.format);
    writer->SetColumns(statement.GetColumnNames());
    while (statement.Step())
        writer->AddRow(statement.GetRow());
    // Only now, so that a statement that fails at a late row leaves no half result.
    WriteOutput(writer->TakeText());
    return kSuccess;
}

} // namespace

Action DeclareQuery(CLI::App& parser) {
    const auto options = std::make_shared<Options>();
    AddFile(parser, options->file);
    AddText(parser, "--database", options->database, "DB", "the SQLite database, which is only read")->required();
    AddText(parser, "--format", options->format, "FORMAT", "table (unless given), csv or json")
        ->check(CLI::IsMember(FormatNames()).description(""));
    AddParameterOptions(parser, options->parameters);
    return [options] { return Query(*options); };
}

} // namespace brindle_tool
