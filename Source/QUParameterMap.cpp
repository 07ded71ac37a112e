// The base behaviour of every parameter map, and the map that an application fills itself.
#include "QUParameterMap.h"

#include <iterator>

#include "Mortise/AUT_I_UserConfiguration.h"

#include "AQU_I_ParameterMap.h"
#include "AQU_ParameterMapApp.h"

using namespace parameter_result;

const I18NString& AQU_EnvironmentMapName() {
    static const I18NString& name = *new I18NString("_env");
    return name;
}

bool AQU_MultiValuesAllowed() {
    static constinit AUT_UserInteger option("General Options", "MultiValuesAllowed", 0);
    return option.Get() != 0;
}

AQU_I_ParameterMap::~AQU_I_ParameterMap() = default;

int AQU_I_ParameterMap::Get(const I18NString&, const I18NString&, std::vector<I18NString>&) { return kUnsupported; }

void AQU_I_ParameterMap::SetDefault(const I18NString&, const I18NString&) {}

int AQU_I_ParameterMap::GetDefault(const I18NString&, std::vector<I18NString>&) { return kUnsupported; }

AQU_ParameterMapApp::AQU_ParameterMapApp(const I18NString& servedMapName, int initialPriority)
    : AQU_I_ParameterMap(initialPriority), mapName(servedMapName) {}

AQU_ParameterMapApp::~AQU_ParameterMapApp() = default;

int AQU_ParameterMapApp::Get(const I18NString& key, I18NString& value) {
    return Get(AQU_EnvironmentMapName(), key, value);
}

int AQU_ParameterMapApp::Get(const I18NString& map, const I18NString& key, std::vector<I18NString>& values) {
    if (!(map == mapName)) return kMapNotServed;
    const auto [first, last] = entries.equal_range(key);
    if (first == last) return kNoSuchKey;
    // Only a new list: asked for again and again, an exact room would have a growing one copied each time.
    if (values.empty()) values.reserve(static_cast<std::size_t>(std::distance(first, last)));
    for (auto entry = first; entry != last; ++entry)
        values.push_back(entry->second);
    return kFound;
}

int AQU_ParameterMapApp::Get(const I18NString& map, const I18NString& key, I18NString& value) {
    if (!(map == mapName)) return kMapNotServed;
    const auto behind = entries.upper_bound(key);
    if (behind == entries.begin() || std::prev(behind)->first != key) return kNoSuchKey;
    value = std::prev(behind)->second;
    return kFound;
}

void AQU_ParameterMapApp::GetMapNames(std::vector<I18NString>& names) { names.push_back(mapName); }

int AQU_ParameterMapApp::GetAllEntries(const I18NString& map, std::vector<std::pair<I18NString, I18NString>>& out) {
    if (!(map == mapName)) return kMapNotServed;
    out.insert(out.end(), entries.begin(), entries.end());
    return kFound;
}

void AQU_ParameterMapApp::SetDefault(const I18NString& map, const I18NString& value) {
    if (map == mapName) defaults.push_back(value);
}

int AQU_ParameterMapApp::GetDefault(const I18NString& map, std::vector<I18NString>& values) {
    if (!(map == mapName)) return kMapNotServed;
    values.insert(values.end(), defaults.begin(), defaults.end());
    return kFound;
}

int AQU_ParameterMapApp::GetDefault(const I18NString& map, I18NString& value) {
    if (!(map == mapName)) return kMapNotServed;
    value = defaults.empty() ? I18NString() : defaults.back();
    return kFound;
}

int AQU_ParameterMapApp::Get(const I18NString& key, std::vector<I18NString>& values) {
    return Get(AQU_EnvironmentMapName(), key, values);
}

int AQU_ParameterMapApp::Set(const I18NString& key, const I18NString& value) {
    return Set(AQU_EnvironmentMapName(), key, value);
}

int AQU_ParameterMapApp::Set(const I18NString& map, const I18NString& key, const I18NString& value) {
    if (!(map == mapName)) return kMapNotServed;
    const bool keepEarlier = AQU_MultiValuesAllowed();
    // The new entry goes in first, behind those of equal key: if there is no memory for it, the earlier values stand.
    const auto added = entries.emplace(key, value);
    if (!keepEarlier) entries.erase(entries.lower_bound(added->first), added);
    return kFound;
}

int AQU_ParameterMapApp::Delete(const I18NString& key) { return Delete(AQU_EnvironmentMapName(), key); }

int AQU_ParameterMapApp::Delete(const I18NString& map, const I18NString& key) {
    if (!(map == mapName)) return kMapNotServed;
    return entries.erase(key) > 0 ? kFound : kNoSuchKey;
}
