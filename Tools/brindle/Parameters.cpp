#include "Parameters.h"

#include <string_view>

#include <CLI/CLI.hpp>

#include "ABrindle.h"
#include "AQE_TextUtilities.h"

#include "CommandLine.h"
#include "Diagnostic.h"

namespace brindle_tool {
namespace {

void AddValue(ParameterTable& table, std::string_view map, std::string_view key, std::string_view value) {
    table[{I18NString(map), I18NString(key)}].push_back(I18NString(value));
}

[[noreturn]] void RefuseAssignment(const char* option, const char* form, const std::string& found) {
    throw CLI::ValidationError(option, std::string("expected ") + form + ", found '" + found + "'");
}

void TakeParameter(ParameterTable& table, const std::string& assignment) {
    const std::string_view text = assignment;
    const std::size_t equals = text.find('=');
    if (equals == text.npos || equals == 0) RefuseAssignment("-p", "NAME=VALUE", assignment);
    AddValue(table, kEnvironmentMap, text.substr(0, equals), text.substr(equals + 1));
}

void TakeMapEntry(ParameterTable& table, const std::string& assignment) {
    const std::string_view text = assignment;
    const std::size_t colon = text.find(':');
    const std::size_t equals = colon == text.npos ? text.npos : text.find('=', colon);
    if (equals == text.npos || colon == 0) RefuseAssignment("-m", "MAP:KEY=VALUE", assignment);
    AddValue(table, text.substr(0, colon), text.substr(colon + 1, equals - colon - 1), text.substr(equals + 1));
}

void NoteMacroValues(const ParameterTable& table) {
    for (const auto& [name, values] : table)
        for (const I18NString& value : values)
            if (AQE_IsMacro(value)) ShowNote("the value of " + ToText(name) + " is itself a macro block");
}

} // namespace

void AddParameterOptions(CLI::App& parser, ParameterOptions& options) {
    AddRepeated(
        parser, "-p", [&options](const std::string& text) { TakeParameter(options.given, text); }, "NAME=VALUE",
        "the value of $NAME; the same NAME given twice makes a list");
    AddRepeated(
        parser, "-m", [&options](const std::string& text) { TakeMapEntry(options.given, text); }, "MAP:KEY=VALUE",
        "the value of $MAP{'KEY'}; likewise");
    AddRepeated(
        parser, "--params", [&options](const std::string& text) { options.files.push_back(text); }, "FILE.json",
        "values from a JSON object of texts, lists of texts and\n"
        "maps of those; per name a later file replaces an\nearlier one, and -p and -m replace all files");
    parser.add_flag("-v,--verbose", options.verbose, "say which values are themselves macro blocks");
}

Parameters::Parameters(const ParameterOptions& options) : m_coordinator(AQU_I_ParameterAccessCoordinator::Create()) {
    for (const std::string& file : options.files)
        Replace(ReadParameterFile(file), file);
    Replace(options.given, "-p/-m");
    if (options.verbose) NoteMacroValues(m_table);

    for (const auto& [name, values] : m_table) {
        const auto [map, added] = m_maps.try_emplace(name.map, name.map, 0);
        if (added) m_coordinator->AddParameterMap(&map->second);
        for (const I18NString& value : values)
            map->second.Set(name.map, name.key, value);
    }
    std::vector<AQU_I_ParameterMap*> configured;
    AQE_I_GetQueryEnginePAC()->GetMaps(configured);
    for (AQU_I_ParameterMap* const map : configured)
        m_coordinator->AddParameterMap(map);
}

void Parameters::Replace(const ParameterTable& stronger, const std::string& source) {
    for (const auto& [name, values] : stronger) {
        m_table[name] = values;
        m_sources[name] = source;
    }
}

} // namespace brindle_tool
