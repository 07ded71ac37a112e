// What the program tells about itself to others than its user: the manual page, and how bash completes its command
// lines. Both are made of what the parsers declare, so that no option is missing from them.
#pragma once

#include <span>
#include <string>

#include "Command.h"

namespace brindle_tool {

// The page brindle.1, for man. `program` has a parser for each of the commands.
std::string MakeManualPage(const CLI::App& program, std::span<const Command> commands);

// A script for bash to read. An option that takes one of some words, which OneOf checks, completes to them; any other
// value completes to the name of a file.
std::string MakeBashCompletion(const CLI::App& program);

} // namespace brindle_tool
