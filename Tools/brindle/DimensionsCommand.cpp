// brindle dimensions: the hierarchies that follow from items, keys and groups.
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <memory>
#include <set>
#include <sstream>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "AQU_I_DimensionInfoFinder.h"

#include "Command.h"
#include "CommandLine.h"
#include "Diagnostic.h"
#include "Files.h"
#include "JsonFailure.h"

namespace brindle_tool {
namespace {

using Json = nlohmann::json; // what is read: an ordered object is searched from its start for each member
using OrderedJson = nlohmann::ordered_json;
using Numbers = std::vector<unsigned>;

struct Options {
    std::string file = "-";
    bool json = false;
};

// Fills a finder from a file of the form {"items": {"1": "year"}, "keys": [[1]], "groups": [[1]]}.
class InputReader {
public:
    InputReader(const Input& input, AQU_I_DimensionInfoFinder& finder) : m_input(input), m_finder(finder) {}

    void Read(const Json& file) {
        if (!file.is_object()) Refuse("an object", "", file);
        for (const auto& [name, value] : file.items())
            if (name != "items" && name != "keys" && name != "groups")
                throw Failure({m_input.name, "expected 'items', 'keys' or 'groups', found '" + Printable(name) + "'"});
        // Names come first: the finder drops sets with items that it doesn't know.
        if (file.contains("items")) ReadItems(file["items"]);
        if (file.contains("keys")) ReadSets(file["keys"], "/keys", &AQU_I_DimensionInfoFinder::AddKey);
        if (file.contains("groups")) ReadSets(file["groups"], "/groups", &AQU_I_DimensionInfoFinder::AddGroup);
    }

private:
    void ReadItems(const Json& items) {
        if (!items.is_object()) Refuse("an object", "/items", items);
        for (const auto& [number, name] : items.items()) {
            unsigned item = 0;
            const char* const end = number.data() + number.size();
            const auto read = std::from_chars(number.data(), end, item);
            if (read.ec != std::errc() || read.ptr != end)
                throw Failure(
                    {m_input.name, "expected the number of an item in '/items', found '" + Printable(number) + "'"});
            if (!name.is_string()) Refuse("a text", "/items/" + number, name);
            m_finder.SetItemName(item, I18NString(std::string_view(name.get_ref<const std::string&>())));
            m_known.insert(item);
        }
    }

    void ReadSets(const Json& sets, const std::string& where, void (AQU_I_DimensionInfoFinder::*add)(const Numbers&)) {
        if (!sets.is_array()) Refuse("a list of lists", where, sets);
        for (std::size_t place = 0; place < sets.size(); ++place) {
            const Numbers items = ReadSet(sets[place], where + "/" + std::to_string(place));
            (m_finder.*add)(items);
        }
    }

    Numbers ReadSet(const Json& set, const std::string& where) {
        if (!set.is_array()) Refuse("a list of numbers", where, set);
        Numbers items;
        for (std::size_t place = 0; place < set.size(); ++place) {
            const Json& item = set[place];
            if (!item.is_number_unsigned() || item.get<std::uint64_t>() > std::numeric_limits<unsigned>::max())
                Refuse("the number of an item", where + "/" + std::to_string(place), item);
            items.push_back(item.get<unsigned>());
        }
        if (items.empty()) NoteDropped(where, "is empty");
        const auto unknown =
            std::find_if(items.begin(), items.end(), [this](unsigned item) { return !m_known.count(item); });
        if (unknown != items.end())
            NoteDropped(where, "has the item " + std::to_string(*unknown) + ", which '/items' lacks");
        return items;
    }

    void NoteDropped(const std::string& where, const std::string& why) const {
        Show({m_input.name, "note: the set at '" + where + "' " + why + "; it is left out"});
    }

    [[noreturn]] void Refuse(const std::string& expected, const std::string& where, const Json& found) const {
        const std::string place = where.empty() ? "" : " at '" + Printable(where) + "'";
        throw Failure({m_input.name, "expected " + expected + place + ", found " +
                                         Printable(found.is_structured() ? found.type_name() : found.dump(), 60)});
    }

    const Input& m_input;
    AQU_I_DimensionInfoFinder& m_finder;
    std::set<unsigned> m_known;
};

OrderedJson ToJson(AQU_I_DimensionInfoFinder& finder, const Numbers& hierarchies) {
    OrderedJson list = OrderedJson::array();
    for (const unsigned hierarchy : hierarchies) {
        Numbers levels;
        finder.GetLevels(hierarchy, levels);
        OrderedJson shownLevels = OrderedJson::array();
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

Json Parse(const Input& input) {
    const std::string_view bytes = input.text.bytes();
    try {
        return Json::parse(bytes.begin(), bytes.end());
    } catch (const Json::parse_error& error) {
        ThrowJsonFailure(input, error.byte, error.what());
    }
}

// The structure is that of the finder's first answer, which leaves out a level that it has put below others.
EExitStatus Dimensions(const Options& options) {
    const Input input = ReadInput(options.file);
    const Json file = Parse(input);
    const std::unique_ptr<AQU_I_DimensionInfoFinder> finder(AQU_I_DimensionInfoFinder::Create());
    InputReader(input, *finder).Read(file);
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
    AddFile(parser, options->file);
    parser.add_flag("--json", options->json, "give hierarchies and levels as JSON, items by their numbers");
    return [options] { return Dimensions(*options); };
}

} // namespace brindle_tool
