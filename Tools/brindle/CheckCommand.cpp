// brindle check: parses files without expanding them and shows the first error of each.
#include <memory>

#include <CLI/CLI.hpp>

#include "AQM_I_MacroExpander.h"

#include "Command.h"
#include "CommandLine.h"
#include "Files.h"
#include "MacroFailure.h"

namespace brindle_tool {
namespace {

void CheckFile(const std::string& file) {
    const Input input = ReadInput(file);
    OrMacroFailure(input, {}, [&] {
        std::vector<AQM_I_MacroExpander::PositionInfo> blocks;
        AQM_I_MacroExpander().GetMacroPositions(input.text, blocks);
    });
}

EExitStatus Check(const std::vector<std::string>& files) {
    EExitStatus status = kSuccess;
    for (const std::string& file : files) {
        try {
            CheckFile(file);
        } catch (const Failure& failure) {
            Show(failure.diagnostic());
            status = kRefused;
        }
    }
    return status;
}

} // namespace

Action DeclareCheck(CLI::App& parser) {
    const auto files = std::make_shared<std::vector<std::string>>();
    AddTexts(parser, "FILE", *files, "the texts; standard input if there is none, or for -");
    return [files] { return Check(files->empty() ? std::vector<std::string>{"-"} : *files); };
}

} // namespace brindle_tool
