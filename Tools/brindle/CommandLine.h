// The command line as the commands see it, with each argument exactly as the shell passed it.
//
// The option parser takes a list in brackets apart at its commas, can read "{}" as no value at all, and lets "--" and
// "++" end the command. That would ruin object names such as "[sales].[orders]". So every argument that begins with a
// bracket or a plus sign, or stands behind "--", passes through the parser behind a guard character, and whatever
// stores an argument takes the guard off again. Operands and options are therefore declared with the functions below,
// not directly. A guard also stands behind "--report=", as a script has it whose variable is empty: the parser would
// take the next argument, the text to be expanded, for the file to be written.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Error;
class Option;
class Validator;
} // namespace CLI

namespace brindle_tool {

// The arguments behind the program's name without the first "--", guarded, last one first: the form that
// CLI::App::parse takes.
std::vector<std::string> GuardedArguments(int argc, const char* const* argv);

// An operand or an option with one value; `placeholder` stands for the value in the help.
CLI::Option* AddText(CLI::App& parser, const std::string& name, std::string& value, const std::string& placeholder,
                     const std::string& description);

// An operand that can be repeated, shown by its own name.
CLI::Option* AddTexts(CLI::App& parser, const std::string& name, std::vector<std::string>& values,
                      const std::string& description);

// An option that can be repeated; `take` gets each value in its turn and throws CLI::ValidationError for a wrong one.
CLI::Option* AddRepeated(CLI::App& parser, const std::string& name, std::function<void(const std::string&)> take,
                         const std::string& placeholder, const std::string& description);

// The operand FILE of most commands, which holds `content`; without it `file` stays "-".
CLI::Option* AddFile(CLI::App& parser, std::string& file, const std::string& content = "the text");

// A check for a value that is one of the words; the completion of command lines offers them.
CLI::Validator OneOf(std::vector<std::string> words);

// A check for the name of a file where "-" stands for no stream: what is wrong, or the empty text.
std::string RequireName(const std::string& file);

// One line on what is wrong with the command line, and where help is to be had.
std::string DescribeUsageError(const CLI::App& program, const CLI::Error& error);

} // namespace brindle_tool
