// One analysis of keys and groups: the levels that follow from them, and the chains of levels.
#pragma once

#include <set>
#include <vector>

#include "QUDimensionInfoFinder.h"

struct AQU_DimensionStructure {
    AQU_DimensionInfoFinder::Hierarchies hierarchies;
    AQU_DimensionInfoFinder::Levels levels;
    // Found from a group that holds no key; in ascending order.
    std::vector<unsigned> withoutKey;
    // The first found from a key that has no level above it; 0 for none.
    unsigned singleLevel = 0;
    // False if the analysis met a key that another group holds whole; then what was found so far stands as it is.
    bool complete = true;
};

// The key, by its place in the order, that each group is split by: the first one that lies whole in it. -1 for none.
std::vector<int> AQU_SplitGroups(const std::set<AQU_DimensionInfoFinder::ItemSet>& keys,
                                 const std::set<AQU_DimensionInfoFinder::ItemSet>& groups);

AQU_DimensionStructure AQU_FindStructure(const std::set<AQU_DimensionInfoFinder::ItemSet>& keys,
                                         const std::set<AQU_DimensionInfoFinder::ItemSet>& groups);
