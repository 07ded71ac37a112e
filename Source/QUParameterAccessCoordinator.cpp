// The coordinator's walks over its maps. They ask in one order and differ in what displaces an earlier answer.
#include "QUParameterAccessCoordinator.h"

#include <algorithm>

#include "QUParameterMap.h"

using namespace parameter_result;

namespace {

constexpr int kNoMaps = 0;

// The answer that holds so far in a walk, and the priority that its map had when it was accepted.
template <class T>
struct Holder {
    T value;
    AQU_I_ParameterMap* map = nullptr;
    int priority = 0;

    bool empty() const { return map == nullptr; }

    void Accept(T&& candidate, AQU_I_ParameterMap* candidateMap) {
        value = std::move(candidate);
        map = candidateMap;
        priority = candidateMap->GetPriority();
    }

    int Deliver(T& valueOut, AQU_I_ParameterMap*& mapOut) {
        if (empty()) return kNoSuchKey;
        valueOut = std::move(value);
        mapOut = map;
        return kFound;
    }
};

using Entries = std::vector<std::pair<I18NString, I18NString>>;

Entries EntriesOf(AQU_I_ParameterMap* map, const I18NString& mapName) {
    Entries entries;
    map->GetAllEntries(mapName, entries);
    return entries;
}

std::map<I18NString, I18NString> MergeSingleValues(const std::vector<AQU_I_ParameterMap*>& maps,
                                                   const I18NString& mapName) {
    std::map<I18NString, I18NString> merged;
    for (AQU_I_ParameterMap* map : maps)
        for (auto& [key, value] : EntriesOf(map, mapName))
            merged.insert_or_assign(std::move(key), std::move(value));
    return merged;
}

// Per key all values come from one map. A map may have several of a key, so its keys are cleared before the first of
// its values goes in.
std::multimap<I18NString, I18NString> MergeValueSets(const std::vector<AQU_I_ParameterMap*>& maps,
                                                     const I18NString& mapName) {
    std::multimap<I18NString, I18NString> merged;
    for (AQU_I_ParameterMap* map : maps) {
        Entries entries = EntriesOf(map, mapName);
        for (const auto& entry : entries)
            merged.erase(entry.first);
        for (auto& [key, value] : entries)
            merged.emplace(std::move(key), std::move(value));
    }
    return merged;
}

} // namespace

AQU_I_ParameterAccessCoordinator* AQU_I_ParameterAccessCoordinator::Create() {
    return new AQU_ParameterAccessCoordinator;
}

AQU_I_ParameterAccessCoordinator::~AQU_I_ParameterAccessCoordinator() = default;

AQU_ParameterAccessCoordinator::~AQU_ParameterAccessCoordinator() = default;

void AQU_ParameterAccessCoordinator::AddParameterAccessCoordinator(AQU_I_ParameterAccessCoordinator* coordinator) {
    coordinators.push_back(coordinator);
}

void AQU_ParameterAccessCoordinator::AddParameterMap(AQU_I_ParameterMap* map) { maps.emplace(map->GetPriority(), map); }

int AQU_ParameterAccessCoordinator::Get(const I18NString& key, std::vector<I18NString>& values) {
    AQU_I_ParameterMap* foundMap = nullptr;
    if (Get(AQU_EnvironmentMapName(), key, values, foundMap) == kFound) return kFound;
    return GetDefault(AQU_EnvironmentMapName(), values, foundMap) == kFound ? kFound : kNoSuchKey;
}

int AQU_ParameterAccessCoordinator::Get(const I18NString& key, I18NString& value) {
    AQU_I_ParameterMap* foundMap = nullptr;
    if (Get(AQU_EnvironmentMapName(), key, value, foundMap) == kFound) return kFound;
    if (GetDefault(AQU_EnvironmentMapName(), value, foundMap) == kFound) return kFound;
    value.clear();
    return kNoSuchKey;
}

int AQU_ParameterAccessCoordinator::Get(const I18NString& mapName, const I18NString& key,
                                        std::vector<I18NString>& values) {
    AQU_I_ParameterMap* foundMap = nullptr;
    if (Get(mapName, key, values, foundMap) == kFound) return kFound;
    GetDefault(mapName, values, foundMap);
    return kNoSuchKey;
}

int AQU_ParameterAccessCoordinator::Get(const I18NString& mapName, const I18NString& key, I18NString& value) {
    AQU_I_ParameterMap* foundMap = nullptr;
    if (Get(mapName, key, value, foundMap) == kFound) return kFound;
    if (GetDefault(mapName, value, foundMap) != kFound) value.clear();
    return kNoSuchKey;
}

int AQU_ParameterAccessCoordinator::Get(const I18NString& mapName, const I18NString& key,
                                        std::vector<I18NString>& values, AQU_I_ParameterMap*& foundMap) {
    return FindValue(mapName, key, values, foundMap);
}

int AQU_ParameterAccessCoordinator::Get(const I18NString& mapName, const I18NString& key, I18NString& value,
                                        AQU_I_ParameterMap*& foundMap) {
    return FindValue(mapName, key, value, foundMap);
}

bool AQU_ParameterAccessCoordinator::IsThereParameterMapWithPriority(int priority) { return maps.contains(priority); }

AQU_I_ParameterMap* AQU_ParameterAccessCoordinator::GetParameterMapWithPriority(int priority) {
    const auto first = maps.lower_bound(priority);
    return first != maps.end() && first->first == priority ? first->second : nullptr;
}

void AQU_ParameterAccessCoordinator::GetMaps(std::vector<AQU_I_ParameterMap*>& out) {
    for (const auto& entry : maps)
        if (std::find(out.begin(), out.end(), entry.second) == out.end()) out.push_back(entry.second);
}

void AQU_ParameterAccessCoordinator::GetAllMaps(std::vector<AQU_I_ParameterMap*>& out) {
    GetMaps(out);
    for (AQU_I_ParameterAccessCoordinator* coordinator : coordinators)
        coordinator->GetAllMaps(out);
}

void AQU_ParameterAccessCoordinator::GetMapNames(AQU_I_ParameterMap* map, std::vector<I18NString>& names) {
    map->GetMapNames(names);
}

int AQU_ParameterAccessCoordinator::GetAllEntries(const I18NString& mapName, Entries& entries) {
    std::vector<AQU_I_ParameterMap*> allMaps;
    GetAllMaps(allMaps);
    if (allMaps.empty()) return kNoMaps;
    std::stable_sort(allMaps.begin(), allMaps.end(), [](const AQU_I_ParameterMap* a, const AQU_I_ParameterMap* b) {
        return a->GetPriority() < b->GetPriority();
    });
    const auto append = [&entries](const auto& merged) { entries.insert(entries.end(), merged.begin(), merged.end()); };
    if (AQU_MultiValuesAllowed())
        append(MergeValueSets(allMaps, mapName));
    else
        append(MergeSingleValues(allMaps, mapName));
    return kFound;
}

int AQU_ParameterAccessCoordinator::GetDefault(const I18NString& mapName, std::vector<I18NString>& values,
                                               AQU_I_ParameterMap*& foundMap) {
    return FindDefault(mapName, values, foundMap);
}

int AQU_ParameterAccessCoordinator::GetDefault(const I18NString& mapName, I18NString& value,
                                               AQU_I_ParameterMap*& foundMap) {
    return FindDefault(mapName, value, foundMap);
}

template <class T>
int AQU_ParameterAccessCoordinator::FindValue(const I18NString& mapName, const I18NString& key, T& value,
                                              AQU_I_ParameterMap*& foundMap) {
    Holder<T> holder;
    for (const auto& [addedPriority, map] : maps) {
        T candidate;
        if (map->Get(mapName, key, candidate) != kFound) continue;
        if (holder.empty() || map->GetPriority() > holder.priority) holder.Accept(std::move(candidate), map);
    }
    for (AQU_I_ParameterAccessCoordinator* coordinator : coordinators) {
        T candidate;
        AQU_I_ParameterMap* map = nullptr;
        if (coordinator->Get(mapName, key, candidate, map) != kFound || map == nullptr) continue;
        if (holder.empty() || map->GetPriority() > holder.priority) holder.Accept(std::move(candidate), map);
    }
    return holder.Deliver(value, foundMap);
}

// An empty default is none. Own maps follow another rule than for values: the first that has a default sets the
// priority, and only a map of just that priority displaces it.
template <class T>
int AQU_ParameterAccessCoordinator::FindDefault(const I18NString& mapName, T& value, AQU_I_ParameterMap*& foundMap) {
    Holder<T> holder;
    for (const auto& [addedPriority, map] : maps) {
        T candidate;
        if (map->GetDefault(mapName, candidate) != kFound || candidate.empty()) continue;
        if (holder.empty() || map->GetPriority() == holder.priority) holder.Accept(std::move(candidate), map);
    }
    for (AQU_I_ParameterAccessCoordinator* coordinator : coordinators) {
        T candidate;
        AQU_I_ParameterMap* map = nullptr;
        if (coordinator->GetDefault(mapName, candidate, map) != kFound || candidate.empty() || map == nullptr) continue;
        if (holder.empty() || map->GetPriority() > holder.priority) holder.Accept(std::move(candidate), map);
    }
    return holder.Deliver(value, foundMap);
}
