// The command-line tool: finds the command, reads the command line for it, runs it, and turns what it throws into a
// message and an exit status.
#include <functional>
#include <new>
#include <string>

#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>

#include "PlatformHooks.h"
#include "ZBLCore/ZBLException.h"
#include "ZBLIDOM/ZBLIDOM_Exception.h"

#include "Command.h"
#include "CommandLine.h"
#include "Diagnostic.h"
#include "Files.h"
#include "Library.h"
#include "SelfDescription.h"
#include "XmlFailure.h"

namespace brindle_tool {
namespace {

// The next file that is opened gets the number of a standard stream that the caller has closed, and what is meant for
// the stream would go into that file. What takes the number here can't be used as the stream, so that its use still
// fails.
void OccupyStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) == -1) open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

constexpr const char* kVersion = "brindle " BRINDLE_VERSION;

constexpr Command kCommands[] = {
    {"expand", "replace the macro blocks of a text by their values",
     "echo 'select #$a# from t' | brindle expand -p a=x", DeclareExpand},
    {"check", "parse texts and show the first error of each", "brindle check queries/*.sql", DeclareCheck},
    {"blocks", "list the macro blocks of a text", "echo 'a #$x# b' | brindle blocks --values -p x=1", DeclareBlocks,
     "A line for each block: start, end, start and end of its leading comment (byte offsets, - for none)."},
    {"document", "give a text with its macro blocks as an XML document", "echo 'a #$x# b' | brindle document",
     DeclareDocument},
    {"query", "expand a text, run the statement on an SQLite database, print the rows",
     "echo 'select * from customer where name = #sq($n)#' | brindle query --database sales.db -p n=Li", DeclareQuery,
     "Columns that share a name are told apart in JSON by a number: id, id_2."},
    {"params", "list the parameter maps in force, the strongest first, and where each comes from",
     "brindle params -p region=North", DeclareParams},
    {"functions", "show which functions a query may use: as a list, as a tree, or one in full",
     "brindle functions list --interface OR --type summary", DeclareFunctions,
     "A line of the list: id, type, level of support, name."},
    {"name", "apply the naming and quoting rules, one result to a line", "brindle name physical select abc 'a b' 1a",
     DeclareName},
    {"csv", "read a delimited file, or convert it to the other dialect", "brindle csv orders.csv --to orders.txt",
     DeclareCsv, "A line for each record, its fields as JSON texts with tabs between them."},
    {"dimensions", "infer hierarchies from items, keys and groups", "brindle dimensions calendar.json",
     DeclareDimensions,
     "The file: {\"items\": {\"1\": \"year\", \"2\": \"month\"}, \"keys\": [[1, 2]], \"groups\": [[1]]}"},
    {"url", "list the prompts of a URL, or fill them in",
     "brindle url 'http://host/report?year=??year??&top=9' -p year=2024", DeclareUrl},
};

void AddCommand(CLI::App& program, const Command& command, Action& chosen) {
    CLI::App* const parser = program.add_subcommand(command.name, command.summary)->group("Commands");
    parser->set_version_flag("--version", kVersion, "show the version");
    parser->set_help_flag("-h,--help", "show this help");
    parser->footer(command.remark);
    parser->callback([&chosen, action = command.declare(*parser)] { chosen = action; });
}

// For the build, which puts the answers into files; no help shows these options.
void AddSelfDescription(CLI::App& program) {
    const auto add = [&program](const char* option, std::function<std::string()> describe) {
        program.add_flag_callback(option, [describe] { throw CLI::Success(describe(), 0); })->group("");
    };
    add("--man-page", [&program] { return MakeManualPage(program, kCommands); });
    add("--bash-completion", [&program] { return MakeBashCompletion(program); });
}

std::string Help(const CLI::App& program) {
    std::string help = program.help();
    for (const Command& command : kCommands)
        if (program.got_subcommand(command.name)) help = std::string("Example: ") + command.example + "\n\n" + help;
    return CLI::detail::rtrim(help) + "\n";
}

EExitStatus Run(int argc, const char* const* argv) {
    CLI::App program("expands and examines query texts with macro blocks", "brindle");
    program.set_version_flag("--version", kVersion, "show the version");
    program.set_help_flag("-h,--help", "show this help");
    program.get_formatter()->column_width(28);
    program.get_formatter()->label("SUBCOMMAND", "COMMAND");
    program.footer("Help on a command: brindle COMMAND --help");
    program.require_subcommand(1);
    Action chosen;
    for (const Command& command : kCommands)
        AddCommand(program, command, chosen);
    AddSelfDescription(program);

    try {
        program.parse(GuardedArguments(argc, argv));
    } catch (const CLI::CallForHelp&) {
        WriteOutput(Help(program));
        return kSuccess;
    } catch (const CLI::Success& answer) {
        WriteOutput(answer.what() + std::string("\n"));
        return kSuccess;
    } catch (const CLI::ParseError& error) {
        Show({"brindle", Printable(DescribeUsageError(program, error))});
        return kWrongUsage;
    }
    const Library library;
    return chosen();
}

} // namespace
} // namespace brindle_tool

int main(int argc, char** argv) {
    using namespace brindle_tool;
    OccupyStandardStreams();
    try {
        // A name given several times is a list of values.
        brindle_platform::overrideOption("General Options", "MultiValuesAllowed", "1");
        return Run(argc, argv);
    } catch (const Failure& failure) {
        Show(failure.diagnostic());
    } catch (const ZBLIDOM_Exception& failure) {
        Show(Describe(failure));
    } catch (const ZBLException& failure) {
        Show({"brindle", Printable(failure.getMessage().bytes())});
    } catch (const std::bad_alloc&) {
        Show({"brindle", "out of memory"});
    } catch (const std::exception& failure) {
        Show({"brindle", Printable(failure.what())});
    }
    return kRefused;
}
