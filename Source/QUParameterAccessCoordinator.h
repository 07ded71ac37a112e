// The coordinator of parameter maps behind AQU_I_ParameterAccessCoordinator.
//
// Every lookup asks every map and every nested coordinator anew, so maps may be added at any time. Own maps are walked
// in ascending order of the priority they were added with, and an answer is displaced only by one of a greater live
// priority: the highest wins, and of equal ones the first asked. Results are delivered at the end of the walk, so that
// an output may be the same object as an argument.
#pragma once

#include <list>
#include <map>
#include <utility>
#include <vector>

#include "ZBLCore/I18NString.h"

#include "AQU_I_ParameterAccessCoordinator.h"
#include "AQU_I_ParameterMap.h"

// One thread at a time while it is being filled; immutable to lookups.
class AQU_ParameterAccessCoordinator : public AQU_I_ParameterAccessCoordinator {
public:
    ~AQU_ParameterAccessCoordinator() override;

    void AddParameterAccessCoordinator(AQU_I_ParameterAccessCoordinator* coordinator) override;
    void AddParameterMap(AQU_I_ParameterMap* map) override;
    int Get(const I18NString& key, std::vector<I18NString>& values) override;
    int Get(const I18NString& key, I18NString& value) override;
    int Get(const I18NString& mapName, const I18NString& key, std::vector<I18NString>& values) override;
    int Get(const I18NString& mapName, const I18NString& key, I18NString& value) override;
    int Get(const I18NString& mapName, const I18NString& key, std::vector<I18NString>& values,
            AQU_I_ParameterMap*& foundMap) override;
    int Get(const I18NString& mapName, const I18NString& key, I18NString& value,
            AQU_I_ParameterMap*& foundMap) override;
    bool IsThereParameterMapWithPriority(int priority) override;
    AQU_I_ParameterMap* GetParameterMapWithPriority(int priority) override;
    void GetMaps(std::vector<AQU_I_ParameterMap*>& out) override;
    void GetAllMaps(std::vector<AQU_I_ParameterMap*>& out) override;
    void GetMapNames(AQU_I_ParameterMap* map, std::vector<I18NString>& names) override;
    int GetAllEntries(const I18NString& mapName, std::vector<std::pair<I18NString, I18NString>>& entries) override;

    int GetDefault(const I18NString& mapName, std::vector<I18NString>& values, AQU_I_ParameterMap*& foundMap) override;
    int GetDefault(const I18NString& mapName, I18NString& value, AQU_I_ParameterMap*& foundMap) override;

private:
    // T is I18NString for one value or std::vector<I18NString> for several.
    template <class T>
    int FindValue(const I18NString& mapName, const I18NString& key, T& value, AQU_I_ParameterMap*& foundMap);
    template <class T>
    int FindDefault(const I18NString& mapName, T& value, AQU_I_ParameterMap*& foundMap);

    std::multimap<int, AQU_I_ParameterMap*> maps;
    // A list, like the map above it: a map of the caller may add to both in the middle of a walk.
    std::list<AQU_I_ParameterAccessCoordinator*> coordinators;
};
