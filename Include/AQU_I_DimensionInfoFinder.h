// Infers hierarchies from flat facts: which sets of items are keys, and which sets of items belong together.
//
//     std::unique_ptr<AQU_I_DimensionInfoFinder> finder(AQU_I_DimensionInfoFinder::Create());
//     for (unsigned item = 1; item <= 3; ++item) finder->SetItemName(item, names[item]);
//     finder->AddKey({1, 2});
//     finder->AddGroup({1});
//     finder->AddGroup({1, 2, 3});
//     finder->GetHierarchies(hierarchies); // one: level {1} above level {2} with the property 3
#pragma once

#include <iosfwd>
#include <vector>

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

// Input first, then queries: once an analysis has found a hierarchy there is no further one, whatever is added. Item
// numbers are the caller's; hierarchies and levels are numbered from 1. Nothing is reported as a failure. No locks: an
// object belongs to one thread at a time.
class BRINDLE_API AQU_I_DimensionInfoFinder {
public:
    // A new finder, which is the caller's.
    static AQU_I_DimensionInfoFinder* Create();

    virtual ~AQU_I_DimensionInfoFinder();

    // A second name for an item replaces the first.
    virtual void SetItemName(const unsigned& item, const I18NString& name) = 0;

    // A set of items, in any order. Names come first: the whole call does nothing if the set is empty or one of the
    // items has no name.
    virtual void AddKey(const std::vector<unsigned>& items) = 0;
    virtual void AddGroup(const std::vector<unsigned>& items) = 0;

    // Appends the hierarchies' numbers. The first call that finds any analyses the input, and leaves out a hierarchy
    // whose one level it has put below others; later calls list that, too. There is a structure only where at least one
    // group holds no key. Pass an empty vector: what stands in it is taken for hierarchies found.
    virtual void GetHierarchies(std::vector<unsigned>& out) = 0;

    // Replaces `out`: the hierarchy's levels from the top down; a level's key items and whether they alone make up the
    // key; a level's further items. An unknown number leaves everything as it is.
    virtual void GetLevels(const unsigned& hierarchy, std::vector<unsigned>& out) = 0;
    virtual void GetLevelKeys(const unsigned& level, std::vector<unsigned>& out, bool& unique) = 0;
    virtual void GetLevelProperties(const unsigned& level, std::vector<unsigned>& out) = 0;

    // Writes the structure as lines of text, analysing the input if that hasn't been done. The first argument isn't
    // used.
    virtual void Dump(const void* unused, std::ostream& stream) = 0;
};
