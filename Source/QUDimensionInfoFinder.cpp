// Keys and groups are kept as sorted sets; an analysis replaces hierarchies and levels as a whole.
#include "QUDimensionInfoFinder.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "QUDimensionAnalysis.h"

AQU_I_DimensionInfoFinder* AQU_I_DimensionInfoFinder::Create() { return new AQU_DimensionInfoFinder; }

AQU_I_DimensionInfoFinder::~AQU_I_DimensionInfoFinder() = default;

void AQU_DimensionInfoFinder::SetItemName(const unsigned& item, const I18NString& name) {
    dirty = true;
    itemNames[item] = name;
}

void AQU_DimensionInfoFinder::AddKey(const std::vector<unsigned>& items) { Add(keys, items); }

void AQU_DimensionInfoFinder::AddGroup(const std::vector<unsigned>& items) { Add(groups, items); }

void AQU_DimensionInfoFinder::Add(std::set<ItemSet>& sets, const std::vector<unsigned>& items) {
    const auto hasName = [this](unsigned item) { return itemNames.contains(item); };
    if (items.empty() || !std::ranges::all_of(items, hasName)) return;
    ItemSet set = items;
    std::ranges::sort(set);
    set.erase(std::unique(set.begin(), set.end()), set.end());
    dirty = true;
    sets.insert(std::move(set));
}

void AQU_DimensionInfoFinder::GetHierarchies(std::vector<unsigned>& out) {
    if (hierarchies.empty()) {
        Analyse(out);
        return;
    }
    for (const auto& [number, chain] : hierarchies)
        out.push_back(number);
}

void AQU_DimensionInfoFinder::GetLevels(const unsigned& hierarchy, std::vector<unsigned>& out) {
    if (const auto found = hierarchies.find(hierarchy); found != hierarchies.end()) out = found->second;
}

void AQU_DimensionInfoFinder::GetLevelKeys(const unsigned& level, std::vector<unsigned>& out, bool& unique) {
    const auto found = levels.find(level);
    if (found == levels.end()) return;
    out = found->second.keyItems;
    unique = found->second.unique;
}

void AQU_DimensionInfoFinder::GetLevelProperties(const unsigned& level, std::vector<unsigned>& out) {
    if (const auto found = levels.find(level); found != levels.end()) out = found->second.propertyItems;
}

// Nothing changes before all is known, so that a failure for want of memory leaves the input to be analysed again.
void AQU_DimensionInfoFinder::Analyse(std::vector<unsigned>& out) {
    if (!dirty || groups.empty()) {
        dirty = false;
        return;
    }
    bool isAnyWithoutKey = false;
    std::vector<bool> isSplitter(keys.size());
    for (const int key : AQU_SplitGroups(keys, groups)) {
        if (key < 0) {
            isAnyWithoutKey = true;
        } else {
            isSplitter[static_cast<std::size_t>(key)] = true;
        }
    }
    if (!isAnyWithoutKey) {
        dirty = false;
        return;
    }
    // A key that splits no group stands for a group of its own.
    std::size_t place = 0;
    for (const ItemSet& key : keys)
        if (!isSplitter[place++]) groups.insert(key);

    AQU_DimensionStructure found = AQU_FindStructure(keys, groups);
    std::vector<unsigned> numbers = out;
    for (const auto& [number, chain] : found.hierarchies)
        numbers.push_back(number);
    if (found.complete) {
        if (!found.withoutKey.empty() && found.singleLevel != 0) {
            const unsigned level = found.hierarchies[found.singleLevel].front();
            for (const unsigned hierarchy : found.withoutKey)
                found.hierarchies[hierarchy].push_back(level);
            std::erase(numbers, found.singleLevel);
        }
        if (numbers.size() == 1) AddUnassignedItems(found.hierarchies, found.levels, numbers.front());
    }
    out = std::move(numbers);
    hierarchies = std::move(found.hierarchies);
    levels = std::move(found.levels);
    dirty = false;
}

// Items that stand in no level of the hierarchy become properties of its lowest one.
void AQU_DimensionInfoFinder::AddUnassignedItems(const Hierarchies& found, Levels& foundLevels,
                                                 unsigned hierarchy) const {
    const auto entry = found.find(hierarchy);
    if (entry == found.end()) return;
    std::set<unsigned> assigned;
    for (const unsigned number : entry->second) {
        const Level& level = foundLevels.at(number);
        assigned.insert(level.keyItems.begin(), level.keyItems.end());
        assigned.insert(level.propertyItems.begin(), level.propertyItems.end());
    }
    std::vector<unsigned>& properties = foundLevels.at(entry->second.back()).propertyItems;
    for (const auto& [item, name] : itemNames)
        if (!assigned.contains(item)) properties.push_back(item);
}

void AQU_DimensionInfoFinder::Dump(const void*, std::ostream& stream) {
    stream << "AQU_I_DimensionInfoFinder::Dump" << std::endl << "Hierarchies:" << std::endl;
    std::vector<unsigned> hierarchyNumbers, levelNumbers, items;
    GetHierarchies(hierarchyNumbers);
    for (const unsigned hierarchy : hierarchyNumbers) {
        stream << "H_" << hierarchy << std::endl;
        GetLevels(hierarchy, levelNumbers);
        for (const unsigned level : levelNumbers) {
            bool unique = false;
            GetLevelKeys(level, items, unique);
            stream << "    L_" << level << std::endl << "        Keys:" << (unique ? "Unique" : "") << std::endl;
            for (const unsigned item : items)
                stream << "            K_" << item << "->" << itemNames[item] << std::endl;
            GetLevelProperties(level, items);
            if (!items.empty()) stream << "        Props:" << std::endl;
            for (const unsigned item : items)
                stream << "            " << item << "->" << itemNames[item] << std::endl;
        }
    }
}
