// brindle document: the text as an XML document with an element for each macro block.
#include <memory>

#include <CLI/CLI.hpp>

#include "ZBLIDOM/ZBLIDOM_Helper.h"

#include "AQM_I_MacroExpander.h"

#include "Command.h"
#include "CommandLine.h"
#include "Files.h"
#include "MacroFailure.h"

namespace brindle_tool {
namespace {

EExitStatus WriteDocument(const std::string& file) {
    const Input input = ReadInput(file);
    const I18NString xml = OrMacroFailure(
        input, {}, [&] { return ZBLIDOM_Helper::serialize(AQM_I_MacroExpander().GetAsXml(input.text)); });
    WriteOutput(xml.bytes());
    return kSuccess;
}

} // namespace

Action DeclareDocument(CLI::App& parser) {
    const auto file = std::make_shared<std::string>("-");
    AddFile(parser, *file);
    return [file] { return WriteDocument(*file); };
}

} // namespace brindle_tool
