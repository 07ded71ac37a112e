// brindle dimensions: the hierarchies that follow from items, keys and groups.
#include <memory>
#include <sstream>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "AQU_I_DimensionInfoFinder.h"

#include "Command.h"
#include "CommandLine.h"
#include "Diagnostic.h"
#include "DimensionFile.h"
#include "Files.h"

namespace brindle_tool {
namespace {

using Json = nlohmann::ordered_json;
using Numbers = std::vector<unsigned>;

struct Options {
    std::string file = "-";
    bool json = false;
};

Json ToJson(AQU_I_DimensionInfoFinder& finder, const Numbers& hierarchies) {
    Json list = Json::array();
    for (const unsigned hierarchy : hierarchies) {
        Numbers levels;
        finder.GetLevels(hierarchy, levels);
        Json shownLevels = Json::array();
        for (const unsigned level : levels) {
            Numbers keyItems, properties;
            bool unique = false;
            finder.GetLevelKeys(level, keyItems, unique);
            finder.GetLevelProperties(level, properties);
            shownLevels.push_back(
                {{"level", level}, {"unique", unique}, {"keys", keyItems}, {"properties", properties}});
        }
        list.push_back({{"hierarchy", hierarchy}, {"levels", std::move(shownLevels)}});
    }
    return list;
}

// The structure is that of the finder's first answer, which leaves out a level that it has put below others.
EExitStatus Dimensions(const Options& options) {
    const Input input = ReadInput(options.file);
    const std::unique_ptr<AQU_I_DimensionInfoFinder> finder(AQU_I_DimensionInfoFinder::Create());
    ReadDimensionFile(input, *finder, Show);
    std::ostringstream text;
    if (options.json) {
        Numbers hierarchies;
        finder->GetHierarchies(hierarchies);
        text << ToJson(*finder, hierarchies).dump();
    } else {
        finder->Dump(nullptr, text);
    }
    Numbers all;
    finder->GetHierarchies(all);
    if (all.empty()) Show({input.name, "note: no structure is found; there is one only where a group holds no key"});
    WriteOutput(text.str());
    return kSuccess;
}

} // namespace

Action DeclareDimensions(CLI::App& parser) {
    const auto options = std::make_shared<Options>();
    AddFile(parser, options->file, "items, keys and groups as JSON");
    parser.add_flag("--json", options->json, "give hierarchies and levels as JSON, items by their numbers");
    return [options] { return Dimensions(*options); };
}

} // namespace brindle_tool
