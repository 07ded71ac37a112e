// brindle name: the naming and quoting rules, one line for each result.
#include <memory>

#include <CLI/CLI.hpp>

#include "AQE_SqlNames.h"

#include "Command.h"
#include "CommandLine.h"
#include "Diagnostic.h"
#include "Files.h"

namespace brindle_tool {
namespace {

using Names = std::vector<I18NString>;

Names Physical(const Names& texts) {
    Names names;
    for (const I18NString& text : texts)
        names.push_back(AQE_MakePhysicalSqlName(text));
    return names;
}

Names Identifiers(const Names& texts) {
    Names names;
    for (const I18NString& text : texts)
        names.push_back(AQE_MakeValidSqlIdentifier(text));
    return names;
}

Names Object(const Names& texts) { return {AQE_ConvertNamepartToString(texts)}; }

Names Split(const Names& texts) {
    Names parts;
    for (const I18NString& text : texts)
        if (!AQE_ExtractNamePartsFromString(text, parts))
            throw Failure("expected an object name such as [a].[b], found '" + Printable(text.bytes()) + "'");
    return parts;
}

struct Rule {
    const char* name;
    Names (*apply)(const Names& texts);
};

constexpr Rule kRules[] = {{"physical", Physical}, {"object", Object}, {"split", Split}, {"identifier", Identifiers}};

struct Options {
    std::string rule;
    std::vector<std::string> texts;
};

EExitStatus Name(const Options& options) {
    Names texts;
    for (const std::string& text : options.texts)
        texts.push_back(I18NString(std::string_view(text)));
    std::string lines;
    for (const Rule& rule : kRules)
        if (options.rule == rule.name)
            for (const I18NString& name : rule.apply(texts))
                lines.append(name.bytes()) += '\n';
    WriteOutput(lines);
    return kSuccess;
}

} // namespace

Action DeclareName(CLI::App& parser) {
    const auto options = std::make_shared<Options>();
    std::vector<std::string> rules;
    for (const Rule& rule : kRules)
        rules.push_back(rule.name);
    AddText(parser, "RULE", options->rule, "",
            "physical: each TEXT as a name in SQL\nobject: the parts TEXT as one object name\n"
            "split: the parts of each object name\nidentifier: each TEXT as a plain identifier")
        ->option_text(" ")
        ->required()
        ->check(OneOf(rules));
    AddTexts(parser, "TEXT", options->texts, "what the rule is applied to; put -- in front if one begins with -")
        ->required();
    return [options] { return Name(*options); };
}

} // namespace brindle_tool
