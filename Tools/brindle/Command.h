// What a command is to the program: a row of the table in Main.cpp. A new command is a file with its declaring
// function, a line here and a row there.
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace brindle_tool {

enum EExitStatus : int { kSuccess = 0, kRefused = 1, kWrongUsage = 2 };

// Does a command's work once the command line has been read, and answers the exit status. Throws Failure for what is
// refused; the program shows it and ends with kRefused.
using Action = std::function<EExitStatus()>;

struct Command {
    const char* name;
    const char* summary;
    const char* example; // a line for the shell, which opens the command's help
    // Adds operands and options to the command's own parser; the values live in the action.
    Action (*declare)(CLI::App& parser);
    const char* remark = ""; // ends the help
};

Action DeclareExpand(CLI::App& parser);
Action DeclareCheck(CLI::App& parser);
Action DeclareBlocks(CLI::App& parser);
Action DeclareDocument(CLI::App& parser);
Action DeclareParams(CLI::App& parser);
Action DeclareFunctions(CLI::App& parser);
Action DeclareName(CLI::App& parser);
Action DeclareQuery(CLI::App& parser);
Action DeclareUrl(CLI::App& parser);
Action DeclareCsv(CLI::App& parser);
Action DeclareDimensions(CLI::App& parser);

} // namespace brindle_tool
