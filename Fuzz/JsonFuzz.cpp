// Laws of the JSON that the tool reads, parameter files and the files of "brindle dimensions", over whatever text: what
// is refused and how, and what comes of the rest. The document is read once more as a tree and judged from that.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "AQU_I_DimensionInfoFinder.h"

#include "Diagnostic.h"
#include "DimensionFile.h"
#include "Files.h"
#include "FuzzCheck.h"
#include "ParameterFile.h"

namespace brindle_fuzz {
namespace {

using brindle_tool::Diagnostic;
using brindle_tool::Input;
using brindle_tool::ParameterTable;
using Json = nlohmann::json;
using Numbers = std::vector<unsigned>;

constexpr const char* kFile = "fuzz.json";

// A tree has each name of an object once; `hasTwins` tells whether the text has one twice. Discarded if it is no JSON.
Json Tree(std::string_view text, bool& hasTwins) {
    std::vector<std::set<std::string>> names;
    hasTwins = false;
    return Json::parse(
        text.begin(), text.end(),
        [&](int, Json::parse_event_t event, Json& value) {
            if (event == Json::parse_event_t::object_start) names.emplace_back();
            if (event == Json::parse_event_t::key && !names.back().insert(value.get<std::string>()).second)
                hasTwins = true;
            if (event == Json::parse_event_t::object_end) names.pop_back();
            return true;
        },
        false);
}

void RequirePrintable(std::string_view text, std::string_view lineEnds) {
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view character = brindle_tool::CharacterAt(text, at);
        Require(!brindle_tool::IsControl(character) || lineEnds.find(character) != lineEnds.npos,
                "messages have no control characters");
        at += character.size();
    }
}

// Whether a character stands there, or it is the first place.
bool IsPlaceOf(std::string_view text, std::int64_t line, std::int64_t column) {
    std::int64_t atLine = 1;
    std::int64_t atColumn = 1;
    for (std::size_t at = 0; at < text.size(); at += brindle_tool::CharacterAt(text, at).size()) {
        if (line == atLine && column == atColumn) return true;
        const bool isLineEnd = text[at] == '\n' || (text[at] == '\r' && text.substr(at, 2) != "\r\n");
        atLine += isLineEnd ? 1 : 0;
        atColumn = isLineEnd ? 1 : atColumn + 1;
    }
    return line == 1 && column == 1;
}

// `isJson` if the text is JSON, so that only its form can be refused.
void RequireRefusal(const Diagnostic& refused, const I18NString& text, bool isJson) {
    Require(!refused.what.empty() && refused.what.size() < 4000, "a refusal says what it is, in short");
    RequirePrintable(refused.what, "");
    RequirePrintable(refused.excerpt, "\n");
    Require(refused.where.starts_with(kFile), "a refusal names the file");
    Require(!isJson || refused.where == kFile, "what has another form has no place in the text");
    if (refused.where == kFile) return;

    std::istringstream place(refused.where.substr(std::string_view(kFile).size()));
    char colons[2] = {};
    std::int64_t line = 0;
    std::int64_t column = 0;
    Require(place >> colons[0] >> line >> colons[1] >> column && place.eof() && colons[0] == ':' && colons[1] == ':',
            "a place is line and column");
    Require(IsPlaceOf(text.bytes(), line, column), "the place is one of the text");
    Require(text.empty() == refused.excerpt.empty(), "the line is shown");
}

bool IsTexts(const Json& value) {
    return value.is_array() && std::all_of(value.begin(), value.end(), [](const Json& one) { return one.is_string(); });
}

// Answers whether the value has the right form and the name is new.
bool AddExpected(ParameterTable& table, const std::string& map, const std::string& key, const Json& value) {
    if (!value.is_string() && !IsTexts(value)) return false;
    std::vector<I18NString> texts;
    for (const Json& text : value.is_string() ? Json::array({value}) : value)
        texts.emplace_back(std::string_view(text.get_ref<const std::string&>()));
    return table.try_emplace({I18NString(std::string_view(map)), I18NString(std::string_view(key))}, texts).second;
}

// None for what is to be refused.
std::optional<ParameterTable> ExpectedParameters(const Json& tree) {
    if (!tree.is_object()) return std::nullopt;
    ParameterTable table;
    for (const auto& [name, value] : tree.items()) {
        if (!value.is_object()) {
            if (!AddExpected(table, brindle_tool::kEnvironmentMap, name, value)) return std::nullopt;
            continue;
        }
        for (const auto& [key, inner] : value.items())
            if (!AddExpected(table, name, key, inner)) return std::nullopt;
    }
    return table;
}

std::optional<ParameterTable> ReadParameters(const I18NString& text, bool isJson) {
    try {
        return brindle_tool::ParseParameters(Input{kFile, text});
    } catch (const brindle_tool::Failure& failure) {
        RequireRefusal(failure.diagnostic(), text, isJson);
        return std::nullopt;
    }
}

void RunParameters(const I18NString& text) {
    bool hasTwins = false;
    const Json tree = Tree(text.bytes(), hasTwins);
    const std::optional<ParameterTable> table = ReadParameters(text, !tree.is_discarded());
    if (!hasTwins) Require(table == ExpectedParameters(tree), "parameters are those of the document, or none");
    if (!table) return;
    Require(!tree.is_discarded(), "parameters come from JSON");

    Json written = Json::object();
    for (const auto& [name, values] : *table) {
        Json& list = written[std::string(name.map.bytes())][std::string(name.key.bytes())] = Json::array();
        for (const I18NString& value : values)
            list.push_back(value.bytes());
        Require(!brindle_tool::ToText(name).empty(), "a name can be shown");
    }
    Require(ReadParameters(I18NString(std::string_view(written.dump())), true) == table, "parameters come back");
}

struct Structure {
    std::size_t noteCount = 0;
    bool isFound = false;
    std::string dump;
    std::vector<Numbers> answers;
    auto operator<=>(const Structure&) const = default;
};

std::vector<Numbers> Answers(AQU_I_DimensionInfoFinder& finder) {
    std::vector<Numbers> answers(1);
    finder.GetHierarchies(answers[0]);
    for (const unsigned hierarchy : Numbers(answers[0])) {
        Numbers levels;
        finder.GetLevels(hierarchy, levels);
        Require(!levels.empty(), "a hierarchy has levels");
        answers.push_back(levels);
        for (const unsigned level : levels) {
            bool isUnique = false;
            Numbers keys, properties;
            finder.GetLevelKeys(level, keys, isUnique);
            finder.GetLevelProperties(level, properties);
            Require(!keys.empty(), "a level has a key");
            keys.push_back(isUnique);
            answers.insert(answers.end(), {keys, properties});
        }
    }
    return answers;
}

std::string Dump(AQU_I_DimensionInfoFinder& finder) {
    std::ostringstream stream;
    finder.Dump(nullptr, stream);
    return stream.str();
}

// None if the file is refused.
std::optional<Structure> ReadDimensions(const I18NString& text, bool isJson) {
    const std::unique_ptr<AQU_I_DimensionInfoFinder> finder(AQU_I_DimensionInfoFinder::Create());
    const std::unique_ptr<AQU_I_DimensionInfoFinder> dumped(AQU_I_DimensionInfoFinder::Create());
    const Input input{kFile, text};
    Structure structure;
    try {
        ReadDimensionFile(input, *finder, [&structure](const Diagnostic& note) {
            Require(note.where == kFile && note.what.starts_with("note: the set at '/"), "a note names a set");
            ++structure.noteCount;
        });
        ReadDimensionFile(input, *dumped, [](const Diagnostic&) {});
    } catch (const brindle_tool::Failure& failure) {
        RequireRefusal(failure.diagnostic(), text, isJson);
        return std::nullopt;
    }
    structure.dump = Dump(*dumped);
    structure.answers = Answers(*finder);
    const std::vector<Numbers> again = Answers(*finder);
    Require(again == Answers(*finder) && again == Answers(*dumped), "an analysis is done once");
    Require(std::includes(again[0].begin(), again[0].end(), structure.answers[0].begin(), structure.answers[0].end()),
            "later answers list all hierarchies of the first");
    structure.isFound = !again[0].empty();
    return structure;
}

std::optional<unsigned> ExpectedItem(const std::string& text) {
    std::uint64_t number = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') return std::nullopt;
        number = 10 * number + static_cast<std::uint64_t>(c - '0');
        if (number > std::numeric_limits<unsigned>::max()) return std::nullopt;
    }
    return text.empty() ? std::nullopt : std::optional(static_cast<unsigned>(number));
}

bool IsSets(const Json& value) {
    if (!value.is_array()) return false;
    for (const Json& set : value) {
        if (!set.is_array()) return false;
        for (const Json& item : set)
            if (!item.is_number_integer() || item < 0 || item > std::numeric_limits<unsigned>::max()) return false;
    }
    return true;
}

bool IsDimensionFile(const Json& tree, std::set<unsigned>& items) {
    if (!tree.is_object()) return false;
    for (const auto& [name, value] : tree.items()) {
        if (name == "keys" || name == "groups") {
            if (!IsSets(value)) return false;
            continue;
        }
        if (name != "items" || !value.is_object()) return false;
        for (const auto& [number, text] : value.items()) {
            const std::optional<unsigned> item = ExpectedItem(number);
            if (!item || !text.is_string() || !items.insert(*item).second) return false;
        }
    }
    return true;
}

// The same file without the sets that are left out, with the others in another order of their own and of their items,
// and each given twice. Answers how many were left out.
std::size_t Rearrange(Json& tree, const std::set<unsigned>& items) {
    std::size_t dropped = 0;
    for (const char* const name : {"keys", "groups"}) {
        if (!tree.contains(name)) continue;
        Json sets = Json::array();
        for (Json set : tree[name]) {
            const auto isKnown = [&items](const Json& item) { return items.contains(item.get<unsigned>()); };
            if (set.empty() || !std::all_of(set.begin(), set.end(), isKnown)) {
                ++dropped;
                continue;
            }
            sets.push_back(set);
            std::reverse(set.begin(), set.end());
            sets.insert(sets.begin(), set);
        }
        tree[name] = sets;
    }
    return dropped;
}

// Whether there is a group that holds no key, of sets whose items are known.
bool IsAnyGroupWithoutKey(const Json& tree) {
    const auto toSets = [&tree](const char* name) {
        std::vector<std::set<unsigned>> sets;
        if (tree.contains(name))
            for (const Json& set : tree[name])
                sets.push_back(set.get<std::set<unsigned>>());
        return sets;
    };
    const std::vector<std::set<unsigned>> keys = toSets("keys");
    const std::vector<std::set<unsigned>> groups = toSets("groups");
    return std::any_of(groups.begin(), groups.end(), [&keys](const std::set<unsigned>& group) {
        return std::none_of(keys.begin(), keys.end(), [&group](const std::set<unsigned>& key) {
            return std::includes(group.begin(), group.end(), key.begin(), key.end());
        });
    });
}

void RunDimensions(const I18NString& text) {
    bool hasTwins = false;
    Json tree = Tree(text.bytes(), hasTwins);
    const std::optional<Structure> found = ReadDimensions(text, !tree.is_discarded());
    std::set<unsigned> items;
    Require(found.has_value() == (!hasTwins && IsDimensionFile(tree, items)),
            "what has the form of the file is read, and only that");
    if (!found) return;

    std::optional<Structure> same = ReadDimensions(I18NString(std::string_view(tree.dump(2))), true);
    Require(same == found, "the same document has the same structure");
    Require(found->noteCount == Rearrange(tree, items), "a note for each set that is left out");
    same = ReadDimensions(I18NString(std::string_view(tree.dump())), true);
    Require(same && same->noteCount == 0, "sets of known items are taken");
    same->noteCount = found->noteCount;
    Require(same == found, "order, repetition and sets that are left out don't matter");
    // Without one there: a key whose items all stand in another group has no level above it.
    Require(!found->isFound || IsAnyGroupWithoutKey(tree), "there is a structure only where a group holds no key");
}

} // namespace
} // namespace brindle_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const I18NString text(std::string_view(reinterpret_cast<const char*>(data), size));
    brindle_fuzz::RunParameters(text);
    brindle_fuzz::RunDimensions(text);
    return 0;
}
