// brindle url: the prompts of a URL, or the URL with values in their places.
#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "AQU_UrlPrompt.h"

#include "Command.h"
#include "CommandLine.h"
#include "Diagnostic.h"
#include "Files.h"

namespace brindle_tool {
namespace {

using Names = std::vector<I18NString>;

struct Options {
    std::string url;
    std::vector<std::pair<I18NString, I18NString>> values;
    bool json = false;
};

Names PromptsOf(const I18NString& url) {
    Names names;
    AQU_UrlPrompt(url).GetPrompts(names);
    return names;
}

std::string Quoted(const I18NString& text) { return "'" + Printable(text.bytes()) + "'"; }

// What comes of it without a word from the class, but not as it may have been meant, is noted.
void Fill(AQU_UrlPrompt& prompt, const Names& prompts, const I18NString& name, const I18NString& value) {
    const I18NString before = prompt.GetNewUrl();
    prompt.ReplacePromptsWithValue(name, value);
    if (std::find(prompts.begin(), prompts.end(), name) == prompts.end()) {
        ShowNote("the URL has no prompt " + Quoted(name));
    } else if (before.find("??" + name + "??") < 0) {
        ShowNote("a further value of the prompt " + Quoted(name) + " is not used");
    } else if (prompt.GetNewUrl() == before) {
        ShowNote("nothing is left of the URL, so it is given with its prompts");
    }
}

std::string List(const Names& prompts, bool json) {
    if (json) {
        nlohmann::json list = nlohmann::json::array();
        for (const I18NString& prompt : prompts)
            list.push_back(prompt.bytes());
        return list.dump();
    }
    std::string lines;
    for (const I18NString& prompt : prompts)
        lines.append(prompt.bytes()) += '\n';
    return lines;
}

EExitStatus Url(const Options& options) {
    const I18NString url{std::string_view(options.url)};
    const Names prompts = PromptsOf(url);
    if (PromptsOf(url + "??").size() > prompts.size()) ShowNote("a ?? that opens a prompt is not closed");
    if (options.values.empty()) {
        WriteOutput(List(prompts, options.json));
        return kSuccess;
    }
    AQU_UrlPrompt prompt(url);
    for (const auto& [name, value] : options.values)
        Fill(prompt, prompts, name, value);
    WriteOutput(std::string(prompt.GetNewUrl().bytes()) + "\n");
    return kSuccess;
}

void TakeValue(Options& options, const std::string& assignment) {
    const std::string_view text = assignment;
    const std::size_t equals = text.find('=');
    if (equals == text.npos) throw CLI::ValidationError("-p", "expected NAME=VALUE, found '" + assignment + "'");
    options.values.emplace_back(I18NString(text.substr(0, equals)), I18NString(text.substr(equals + 1)));
}

} // namespace

Action DeclareUrl(CLI::App& parser) {
    const auto options = std::make_shared<Options>();
    AddText(parser, "URL", options->url, "", "the URL, with prompts of the form ??NAME??")
        ->option_text(" ")
        ->required();
    CLI::Option* const values = AddRepeated(
        parser, "-p", [options](const std::string& text) { TakeValue(*options, text); }, "NAME=VALUE",
        "put the value, URL-encoded, in the places of the prompt");
    parser.add_flag("--json", options->json, "list the prompts as a JSON array of texts")->excludes(values);
    return [options] { return Url(*options); };
}

} // namespace brindle_tool
