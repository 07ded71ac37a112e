#include "CommandLine.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include <CLI/CLI.hpp>

namespace brindle_tool {
namespace {

// The guard itself is guarded too, so that taking one off always gives the argument back.
constexpr char kGuard = '\x1f';

bool NeedsGuard(const char* argument) {
    return *argument == '[' || *argument == '{' || *argument == '+' || *argument == kGuard;
}

// "--to=", or that with nothing but guards behind.
bool HasEmptyValue(std::string_view argument) {
    const std::size_t equals = argument.find('=');
    return argument.starts_with("--") && equals != argument.npos &&
           argument.find_first_not_of(kGuard, equals + 1) == argument.npos;
}

const CLI::Validator& Unguard() {
    static const CLI::Validator validator(
        [](std::string& argument) {
            if (argument.starts_with(kGuard)) {
                argument.erase(0, 1);
            } else if (HasEmptyValue(argument) && argument.ends_with(kGuard)) {
                argument.pop_back();
            }
            return std::string();
        },
        "");
    return validator;
}

// The one that found something wrong: the program's own if something unknown stands in front of the command.
const CLI::App& FailedParser(const CLI::App& program) {
    const std::vector<const CLI::App*> chosen =
        program.get_subcommands([](const CLI::App* one) { return one->parsed(); });
    return chosen.empty() || !program.remaining().empty() ? program : *chosen.front();
}

// What the parser says begins with a capital letter or with the name of an option.
std::string InOurStyle(std::string message) {
    message.erase(std::remove(message.begin(), message.end(), kGuard), message.end());
    if (message.size() > 1 && message[0] >= 'A' && message[0] <= 'Z' && message[1] >= 'a' && message[1] <= 'z')
        message[0] = static_cast<char>(message[0] - 'A' + 'a');
    return message;
}

// "-p: 1 required NAME=VALUE missing"; behind the placeholder may stand the words that it is one of. For an option that
// is repeated and can't be, "--to: At Most 1 required but received 2".
std::string DescribeNumberOfValues(const std::string& message) {
    constexpr std::string_view kBetween = ": 1 required ", kTooMany = ": At Most 1 required but received ";
    if (const std::size_t many = message.find(kTooMany); many != message.npos)
        return message.substr(0, many) + ": expected one value, found " + message.substr(many + kTooMany.size());
    const std::size_t between = message.find(kBetween);
    if (between == message.npos) return message;
    const std::size_t begin = between + kBetween.size();
    const std::size_t end = std::min(message.find(":{", begin), message.rfind(" missing"));
    return message.substr(0, between) + ": expected " + message.substr(begin, end - begin) + ", found nothing";
}

std::string WhatIsWrong(const CLI::App& program, const CLI::App& parser, const CLI::Error& error) {
    const std::vector<std::string> surplus = parser.remaining();
    if (surplus.empty())
        return &parser == &program ? "a command is missing" : DescribeNumberOfValues(InOurStyle(error.what()));
    const std::string& first = surplus.front();
    std::string what = &parser == &program ? "unknown command '" : "unexpected argument '";
    if (first.size() > 1 && first.front() == '-') what = "unknown option '";
    return InOurStyle(what + first + "'");
}

} // namespace

std::vector<std::string> GuardedArguments(int argc, const char* const* argv) {
    std::vector<std::string> arguments;
    bool operandsOnly = false;
    for (int i = 1; i < argc; ++i) {
        if (!operandsOnly && std::string_view(argv[i]) == "--") {
            operandsOnly = true;
        } else {
            const bool guarded = operandsOnly || NeedsGuard(argv[i]);
            arguments.push_back(guarded ? kGuard + std::string(argv[i]) : argv[i]);
            if (HasEmptyValue(arguments.back())) arguments.back() += kGuard;
        }
    }
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

CLI::Option* AddText(CLI::App& parser, const std::string& name, std::string& value, const std::string& placeholder,
                     const std::string& description) {
    return parser.add_option(name, value, description)->type_name(placeholder)->transform(Unguard());
}

CLI::Option* AddTexts(CLI::App& parser, const std::string& name, std::vector<std::string>& values,
                      const std::string& description) {
    return parser.add_option(name, values, description)->option_text("...")->transform(Unguard());
}

CLI::Option* AddRepeated(CLI::App& parser, const std::string& name, std::function<void(const std::string&)> take,
                         const std::string& placeholder, const std::string& description) {
    return parser.add_option_function<std::string>(name, std::move(take), description)
        ->type_name(placeholder)
        ->transform(Unguard())
        ->trigger_on_parse();
}

CLI::Option* AddFile(CLI::App& parser, std::string& file, const std::string& content) {
    return AddText(parser, "FILE", file, "", content + "; standard input if it is missing or -");
}

CLI::Validator OneOf(std::vector<std::string> words) {
    const std::string description = "{" + CLI::detail::join(words, ",") + "}";
    const auto check = [words = std::move(words)](const std::string& value) -> std::string {
        if (std::find(words.begin(), words.end(), value) != words.end()) return {};
        std::string expected;
        for (const std::string& word : words)
            expected += (&word == &words.front() ? "" : &word == &words.back() ? " or " : ", ") + word;
        return "expected " + expected + ", found '" + value + "'";
    };
    return CLI::Validator(check, description);
}

std::string RequireName(const std::string& file) {
    return file == "-" || file.empty() ? "expected a file, found '" + file + "'" : "";
}

std::string DescribeUsageError(const CLI::App& program, const CLI::Error& error) {
    const CLI::App& parser = FailedParser(program);
    const std::string command = &parser == &program ? "brindle" : "brindle " + parser.get_name();
    return WhatIsWrong(program, parser, error) + "; see '" + command + " --help'";
}

} // namespace brindle_tool
