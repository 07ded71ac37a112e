// brindle blocks: where the macro blocks of a text lie, and what each yields.
#include <memory>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "AQM_I_MacroExpander.h"

#include "Command.h"
#include "CommandLine.h"
#include "Files.h"
#include "MacroFailure.h"
#include "Parameters.h"

namespace brindle_tool {
namespace {

using Blocks = std::vector<AQM_I_MacroExpander::PositionInfo>;
using Json = nlohmann::ordered_json;

struct Options {
    std::string file = "-";
    bool values = false;
    bool json = false;
    ParameterOptions parameters;
};

// The members of one block in the order of the columns.
Json ToJson(const AQM_I_MacroExpander::PositionInfo& block, bool values) {
    const auto offset = [](std::int32_t value) { return value < 0 ? Json() : Json(value); };
    Json members = {{"start", offset(block.startPosition)},
                    {"end", offset(block.endPosition)},
                    {"commentStart", offset(block.commentStart)},
                    {"commentEnd", offset(block.commentEnd)}};
    if (values) members["value"] = block.expansion.bytes();
    return members;
}

std::string ToLine(const Json& members) {
    std::string line;
    for (const Json& member : members) {
        if (!line.empty()) line += '\t';
        line += member.is_null() ? "-" : member.dump();
    }
    return line + "\n";
}

EExitStatus ListBlocks(const Options& options) {
    Parameters parameters(options.parameters);
    const Input input = ReadInput(options.file);
    const Blocks blocks = OrMacroFailure(input, parameters.GetTable(), [&] {
        AQM_I_MacroExpander expander;
        Blocks found;
        if (options.values) {
            expander.Analyze(input.text, parameters.GetCoordinator(), found);
        } else {
            expander.GetMacroPositions(input.text, found);
        }
        return found;
    });

    Json list = Json::array();
    std::string lines;
    for (const auto& block : blocks) {
        Json members = ToJson(block, options.values);
        if (options.json) {
            list.push_back(std::move(members));
        } else {
            lines += ToLine(members);
        }
    }
    WriteOutput(options.json ? list.dump() : lines);
    return kSuccess;
}

} // namespace

Action DeclareBlocks(CLI::App& parser) {
    const auto options = std::make_shared<Options>();
    AddFile(parser, options->file);
    parser.add_flag("--values", options->values, "expand each block and give its value too, as a JSON text");
    parser.add_flag("--json", options->json, "give a JSON array of objects");
    AddParameterOptions(parser, options->parameters);
    return [options] { return ListBlocks(*options); };
}

} // namespace brindle_tool
