// brindle params: the parameter maps in force, the strongest first, with their entries and where each comes from. What
// is listed is what the maps answer themselves, not what was read for them.
#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "ABrindle.h"
#include "AQU_ParameterMapVKE.h"

#include "Command.h"
#include "Diagnostic.h"
#include "Files.h"
#include "Parameters.h"

namespace brindle_tool {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kConfigurationFile = "VKEConfig.xml";

struct Options {
    bool json = false;
    ParameterOptions parameters;
};

// The entries that a map has from one source; several values of a key are a list.
struct Listing {
    int priority;
    Json map;    // null for an object that serves no map name
    Json source; // null if there is no configuration file
    std::vector<std::pair<I18NString, Json>> entries;
};

Json ToJson(const I18NString& text) { return text.bytes(); }

Json ConfigurationFile() {
    const I18NString path = AQU_ParameterMapVKE::FindFile(kConfigurationFile);
    if (path.empty()) return {};
    return std::filesystem::path(path.bytes()).lexically_normal().string();
}

void AddEntry(Listing& listing, const I18NString& key, const I18NString& value) {
    if (listing.entries.empty() || !(listing.entries.back().first == key))
        listing.entries.emplace_back(key, Json::array());
    listing.entries.back().second.push_back(ToJson(value));
}

// The map given on the command line, by source.
void ListGiven(AQU_I_ParameterMap& map, const I18NString& name, const Parameters& parameters,
               std::vector<Listing>& listings) {
    std::vector<std::pair<I18NString, I18NString>> entries;
    map.GetAllEntries(name, entries);
    std::map<std::string, Listing> bySource;
    for (const auto& [key, value] : entries) {
        const I18NString source(std::string_view(parameters.GetSource({name, key})));
        const auto listing = bySource.try_emplace(std::string(source.bytes()),
                                                  Listing{map.GetPriority(), ToJson(name), ToJson(source), {}});
        AddEntry(listing.first->second, key, value);
    }
    for (auto& [source, listing] : bySource)
        listings.push_back(std::move(listing));
}

void ListConfigured(AQU_I_ParameterMap& map, const Json& file, std::vector<Listing>& listings) {
    std::vector<I18NString> names;
    map.GetMapNames(names);
    if (names.empty()) listings.push_back({map.GetPriority(), {}, file, {}});
    for (const I18NString& name : names) {
        std::vector<std::pair<I18NString, I18NString>> entries;
        map.GetAllEntries(name, entries);
        listings.push_back({map.GetPriority(), ToJson(name), file, {}});
        for (const auto& [key, value] : entries)
            AddEntry(listings.back(), key, value);
    }
}

std::vector<Listing> List(Parameters& parameters) {
    std::vector<AQU_I_ParameterMap*> maps, configured;
    parameters.GetCoordinator()->GetAllMaps(maps);
    AQE_I_GetQueryEnginePAC()->GetMaps(configured);
    std::stable_sort(maps.begin(), maps.end(), [](const AQU_I_ParameterMap* a, const AQU_I_ParameterMap* b) {
        return a->GetPriority() > b->GetPriority();
    });
    const Json file = ConfigurationFile();
    std::vector<Listing> listings;
    for (AQU_I_ParameterMap* const map : maps) {
        if (std::find(configured.begin(), configured.end(), map) != configured.end()) {
            ListConfigured(*map, file, listings);
        } else {
            std::vector<I18NString> names;
            map->GetMapNames(names);
            for (const I18NString& name : names)
                ListGiven(*map, name, parameters, listings);
        }
    }
    return listings;
}

std::string ToText(const Listing& listing) {
    const auto printable = [](const Json& text) { return Printable(text.get_ref<const std::string&>()); };
    std::string text = "priority " + std::to_string(listing.priority) + ", ";
    text += listing.map.is_null() ? "no map, " : "map " + printable(listing.map) + ", ";
    text +=
        listing.source.is_null() ? std::string("no file ") + kConfigurationFile : "from " + printable(listing.source);
    for (const auto& [key, values] : listing.entries)
        text += "\n    " + Printable(key.bytes()) + " = " + (values.size() == 1 ? values.front() : values).dump();
    return text + "\n";
}

Json ToJson(const Listing& listing) {
    Json entries = Json::array();
    for (const auto& [key, values] : listing.entries)
        entries.push_back({{"key", ToJson(key)}, {"values", values}});
    return {{"priority", listing.priority}, {"map", listing.map}, {"source", listing.source}, {"entries", entries}};
}

EExitStatus ListParameters(const Options& options) {
    Parameters parameters(options.parameters);
    Json list = Json::array();
    std::string text;
    for (const Listing& listing : List(parameters)) {
        if (options.json) {
            list.push_back(ToJson(listing));
        } else {
            text += ToText(listing);
        }
    }
    WriteOutput(options.json ? list.dump() : text);
    return kSuccess;
}

} // namespace

Action DeclareParams(CLI::App& parser) {
    const auto options = std::make_shared<Options>();
    parser.add_flag("--json", options->json, "give a JSON array of objects");
    AddParameterOptions(parser, options->parameters);
    return [options] { return ListParameters(*options); };
}

} // namespace brindle_tool
