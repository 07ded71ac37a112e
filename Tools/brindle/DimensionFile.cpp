#include "DimensionFile.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "AQU_I_DimensionInfoFinder.h"

#include "JsonFailure.h"

namespace brindle_tool {
namespace {

using Json = nlohmann::json; // an ordered object is searched from its start for each member
using Numbers = std::vector<unsigned>;

class InputReader {
public:
    InputReader(const Input& input, AQU_I_DimensionInfoFinder& finder, const NoteTaker& note)
        : m_input(input), m_finder(finder), m_note(note) {}

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
            if (!m_known.insert(item).second)
                throw Failure({m_input.name, "the item '" + Printable(number) + "' is named twice"});
            m_finder.SetItemName(item, I18NString(std::string_view(name.get_ref<const std::string&>())));
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
            if (!item.is_number_integer() || item < 0 || item > std::numeric_limits<unsigned>::max())
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
        m_note({m_input.name, "note: the set at '" + where + "' " + why + "; it is left out"});
    }

    [[noreturn]] void Refuse(const std::string& expected, const std::string& where, const Json& found) const {
        const std::string place = where.empty() ? "" : " at '" + Printable(where) + "'";
        throw Failure({m_input.name, "expected " + expected + place + ", found " +
                                         Printable(found.is_structured() ? found.type_name() : found.dump(), 60)});
    }

    const Input& m_input;
    AQU_I_DimensionInfoFinder& m_finder;
    const NoteTaker& m_note;
    std::set<unsigned> m_known;
};

// Refuses an object that has a name twice: the tree would keep one of the two.
class TwinFinder {
public:
    explicit TwinFinder(const Input& input) : m_input(input) {}

    bool operator()(int, Json::parse_event_t event, const Json& value) {
        if (event == Json::parse_event_t::object_start) m_names.emplace_back();
        if (event == Json::parse_event_t::object_end) m_names.pop_back();
        if (event == Json::parse_event_t::key) AddName(value.get_ref<const std::string&>());
        return true;
    }

private:
    void AddName(const std::string& name) {
        if (!m_names.back().insert(name).second)
            throw Failure({m_input.name, "the name '" + Printable(name) + "' is given twice"});
    }

    const Input& m_input;
    std::vector<std::set<std::string>> m_names; // of the objects that are open
};

Json Parse(const Input& input) {
    const std::string_view bytes = input.text.bytes();
    try {
        return Json::parse(bytes.begin(), bytes.end(), TwinFinder(input));
    } catch (const Json::parse_error& error) {
        ThrowJsonFailure(input, error.byte, error.what());
    } catch (const Json::out_of_range& error) { // a number beyond every double
        ThrowJsonFailure(input, error.what());
    }
}

} // namespace

void ReadDimensionFile(const Input& input, AQU_I_DimensionInfoFinder& finder, const NoteTaker& note) {
    InputReader(input, finder, note).Read(Parse(input));
}

} // namespace brindle_tool
