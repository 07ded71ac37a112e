// The finder's input and what an analysis has made of it.
#pragma once

#include <map>
#include <set>
#include <vector>

#include "AQU_I_DimensionInfoFinder.h"

class AQU_DimensionInfoFinder : public AQU_I_DimensionInfoFinder {
public:
    // Item numbers in ascending order, each once. Sets compare element by element, a set before those it begins.
    using ItemSet = std::vector<unsigned>;

    struct Level {
        bool unique;
        std::vector<unsigned> keyItems;
        std::vector<unsigned> propertyItems;
    };
    using Hierarchies = std::map<unsigned, std::vector<unsigned>>; // level numbers, top level first
    using Levels = std::map<unsigned, Level>;

    void SetItemName(const unsigned& item, const I18NString& name) override;
    void AddKey(const std::vector<unsigned>& items) override;
    void AddGroup(const std::vector<unsigned>& items) override;
    void GetHierarchies(std::vector<unsigned>& out) override;
    void GetLevels(const unsigned& hierarchy, std::vector<unsigned>& out) override;
    void GetLevelKeys(const unsigned& level, std::vector<unsigned>& out, bool& unique) override;
    void GetLevelProperties(const unsigned& level, std::vector<unsigned>& out) override;
    void Dump(const void* unused, std::ostream& stream) override;

private:
    void Add(std::set<ItemSet>& sets, const std::vector<unsigned>& items);
    void Analyse(std::vector<unsigned>& out);
    void AddUnassignedItems(const Hierarchies& found, Levels& foundLevels, unsigned hierarchy) const;

    bool dirty = false;
    std::map<unsigned, I18NString> itemNames;
    std::set<ItemSet> keys;
    std::set<ItemSet> groups; // and after an analysis the keys that lie in none
    Hierarchies hierarchies;
    Levels levels;
};
