#include "SelfDescription.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

namespace brindle_tool {
namespace {

constexpr const char* kDescription = R"(.SH DESCRIPTION
A text may hold blocks between two #. A block is replaced by its value, which comes from parameters; everything else is
copied as it stands. Results go to standard output, failures and notes to standard error. A failure names the file, and
line and column where there is one.
)";

constexpr const char* kPageEnd = R"(.SH EXIT STATUS
.TP
.B 0
all went well
.TP
.B 1
something was refused or failed; standard error says what and where
.TP
.B 2
the command line is wrong
.SH ENVIRONMENT
.TP
.B BRINDLE_HOME
the installation, in place of the one that the program stands in
.TP
.B BRINDLE_SETTINGS
the file with the user's settings
.TP
.B BRINDLE_LOG
the file of the log, \- for standard error
.TP
.B BRINDLE_DEFAULT_ENCODING
the encoding of comma\-separated files, UTF\-8 unless given
.TP
.B NO_COLOR
no colour in messages on a terminal, if it isn\(aqt empty
.SH FILES
Relative to the installation, save the last:
.TP
.B configuration/VKEConfig.xml
parameters for every query
.TP
.B configuration/functions
the catalogue of functions
.TP
.B logs
the records that \-\-performance writes
.TP
.B \(ti/.config/brindle/settings.toml
the user\(aqs settings, where BRINDLE_SETTINGS names no others)";

// Bash takes --option=word for three words.
constexpr const char* kScriptStart =
    R"(# How bash completes the command lines of brindle. Made from the options that the program declares.
_brindle() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} IFS=$' \t\n'
    local command='' options='' operands='' values='' word
    [[ $previous != '=' ]] || previous=${COMP_WORDS[COMP_CWORD - 2]}
    [[ $current != '=' ]] || current=''
    COMPREPLY=()
    for word in "${COMP_WORDS[@]:1:COMP_CWORD - 1}"; do
        [[ $word == -* ]] || { command=$word && break; }
    done
    case $command in
)";
constexpr const char* kScriptEnd = R"(    *) return ;;
    esac
    if [[ -n $values ]]; then
        operands=$values
    elif [[ $current == -* ]]; then
        operands=$options
    else
        for word in $operands; do
            [[ " ${COMP_WORDS[*]:1:COMP_CWORD - 1} " != *" $word "* ]] || return
        done
    fi
    mapfile -t COMPREPLY < <(compgen -W "$operands" -- "$current")
}
complete -o default -F _brindle brindle)";

using Options = std::vector<const CLI::Option*>;

// What the help shows: an option without a group is hidden.
Options Shown(const CLI::App& parser, bool operands) {
    return parser.get_options([operands](const CLI::Option* option) {
        return !option->get_group().empty() && option->get_positional() == operands;
    });
}

std::vector<const CLI::App*> Commands(const CLI::App& program) {
    return program.get_subcommands([](const CLI::App*) { return true; });
}

// The text as roff shows it unchanged, every line on a line of its own.
std::string Roff(std::string_view text) {
    std::string page = text.starts_with('.') ? "\\&" : "";
    for (const char character : text) {
        switch (character) {
        case '\\':
            page += "\\e";
            break;
        case '-':
            page += "\\-";
            break;
        case '\'':
            page += "\\(aq";
            break;
        case '`':
            page += "\\(ga";
            break;
        case '^':
            page += "\\(ha";
            break;
        case '~':
            page += "\\(ti";
            break;
        case '\n':
            page += "\n.br\n\\&";
            break;
        default:
            page += character;
        }
    }
    return page;
}

std::string Bold(const std::string& text) { return "\\fB" + Roff(text) + "\\fR"; }

std::string Entry(const CLI::Option& option) {
    std::string value = CLI::Formatter().make_option_opts(&option);
    CLI::detail::rtrim(value);
    return ".TP\n" + Bold(option.get_name(option.get_positional(), true)) + Roff(value) + "\n" +
           Roff(option.get_description()) + "\n";
}

std::string CommandLineOf(const CLI::App& parser) {
    std::string line = Bold("brindle " + parser.get_name()) + " [OPTIONS]";
    for (const CLI::Option* const operand : Shown(parser, true))
        line += " " + Roff(CLI::Formatter().make_option_usage(operand));
    return line + "\n";
}

std::string Section(const CLI::App& parser, const Command& command) {
    std::string section = std::string(".SS ") + command.name + "\n" + Roff(command.summary) + "\n.PP\n.RS\n.EX\n" +
                          Roff(command.example) + "\n.EE\n.RE\n";
    for (const CLI::Option* const operand : Shown(parser, true))
        section += Entry(*operand);
    for (const CLI::Option* const option : Shown(parser, false))
        if (option != parser.get_help_ptr() && option != parser.get_version_ptr()) section += Entry(*option);
    return *command.remark == '\0' ? section : section + ".PP\n" + Roff(command.remark) + "\n";
}

std::string Joined(const std::vector<std::string>& words) { return "'" + CLI::detail::join(words, " ") + "'"; }

std::vector<std::string> NamesOf(const CLI::Option& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames())
        names.push_back("-" + name);
    for (const std::string& name : option.get_lnames())
        names.push_back("--" + name);
    return names;
}

// The option's type reads "TYPE:{one,other}" if only some words will do.
std::vector<std::string> WordsFor(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const std::size_t open = type.find(":{");
    if (open == type.npos) return {};
    return CLI::detail::split(type.substr(open + 2, type.find('}', open) - open - 2), ',');
}

std::string Case(const std::string& command, const CLI::App& parser, std::vector<std::string> operands) {
    std::vector<std::string> names, free;
    std::string values;
    for (const CLI::Option* const option : Shown(parser, false)) {
        const std::vector<std::string> more = NamesOf(*option);
        names.insert(names.end(), more.begin(), more.end());
        if (option->get_items_expected_max() == 0) continue;
        const std::vector<std::string> words = WordsFor(*option);
        if (words.empty()) {
            free.insert(free.end(), more.begin(), more.end());
        } else {
            values += "        " + CLI::detail::join(more, " | ") + ") values=" + Joined(words) + " ;;\n";
        }
    }
    if (!free.empty()) values += "        " + CLI::detail::join(free, " | ") + ") return ;;\n";
    for (const CLI::Option* const operand : Shown(parser, true)) {
        const std::vector<std::string> words = WordsFor(*operand);
        operands.insert(operands.end(), words.begin(), words.end());
    }
    return "    " + command + ")\n        options=" + Joined(names) + "\n        operands=" + Joined(operands) + "\n" +
           (values.empty() ? "" : "        case $previous in\n" + values + "        esac\n") + "        ;;\n";
}

} // namespace

std::string MakeManualPage(const CLI::App& program, std::span<const Command> commands) {
    std::string page = ".TH BRINDLE 1 \"\" \"brindle " BRINDLE_VERSION "\" \"User Commands\"\n.SH NAME\nbrindle \\- " +
                       Roff(program.get_description()) + "\n.SH SYNOPSIS\n.nf\n";
    for (const CLI::App* const parser : Commands(program))
        page += CommandLineOf(*parser);
    page += std::string(".fi\n") + kDescription + ".SH OPTIONS\nThe program and every command take these.\n";
    for (const CLI::Option* const option : Shown(program, false))
        page += Entry(*option);
    page += ".SH COMMANDS\n";
    for (const Command& command : commands)
        page += Section(*program.get_subcommand(command.name), command);
    return page + kPageEnd;
}

std::string MakeBashCompletion(const CLI::App& program) {
    std::vector<std::string> names;
    for (const CLI::App* const parser : Commands(program))
        names.push_back(parser->get_name());
    std::string script = kScriptStart + Case("''", program, names);
    for (const CLI::App* const parser : Commands(program))
        script += Case(parser->get_name(), *parser, {});
    return script + kScriptEnd;
}

} // namespace brindle_tool
