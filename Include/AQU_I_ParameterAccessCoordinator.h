// Parameters of many maps under one roof. A lookup goes to every map and then to every nested coordinator, and the
// answer of the map of highest priority wins; of equal ones that of the map asked first.
//
//     std::unique_ptr<AQU_I_ParameterAccessCoordinator> coordinator(AQU_I_ParameterAccessCoordinator::Create());
//     coordinator->AddParameterMap(&requestParameters);
//     coordinator->AddParameterMap(&serverParameters);
//
// Integer answers are those of AQU_I_ParameterMap; a lookup answers 1 or -1.
#pragma once

#include <utility>
#include <vector>

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

class AQU_I_ParameterMap;

// Owns neither its maps nor its nested coordinators; both must outlive the last lookup. Lookups may run on several
// threads as long as nobody adds a map or writes into one.
class BRINDLE_API AQU_I_ParameterAccessCoordinator {
public:
    // An empty coordinator, which the caller deletes.
    static AQU_I_ParameterAccessCoordinator* Create();

    virtual ~AQU_I_ParameterAccessCoordinator();

    // Neither a coordinator nor a map may be null. A coordinator that reaches itself through its nested ones is not
    // detected: its lookups never end.
    virtual void AddParameterAccessCoordinator(AQU_I_ParameterAccessCoordinator* coordinator) = 0;

    // Enters the map under its present priority. Adding it twice is not prevented.
    virtual void AddParameterMap(AQU_I_ParameterMap* map) = 0;

    // Lookups in "_env". A default counts as found: the answer is then 1. With neither a value nor a default, `values`
    // stays as it is and `value` becomes empty. What is found replaces the content of `values`.
    virtual int Get(const I18NString& key, std::vector<I18NString>& values) = 0;
    virtual int Get(const I18NString& key, I18NString& value) = 0;

    // The same in a named map, except that a default is delivered with the answer -1.
    virtual int Get(const I18NString& mapName, const I18NString& key, std::vector<I18NString>& values) = 0;
    virtual int Get(const I18NString& mapName, const I18NString& key, I18NString& value) = 0;

    // Lookups that tell which map answered. Defaults take no part, and nothing is written unless the answer is 1.
    virtual int Get(const I18NString& mapName, const I18NString& key, std::vector<I18NString>& values,
                    AQU_I_ParameterMap*& foundMap) = 0;
    virtual int Get(const I18NString& mapName, const I18NString& key, I18NString& value,
                    AQU_I_ParameterMap*& foundMap) = 0;

    // Both look at this coordinator's own maps, by the priority they were added with. Of several maps the one added
    // first; null if there is none.
    virtual bool IsThereParameterMapWithPriority(int priority) = 0;
    virtual AQU_I_ParameterMap* GetParameterMapWithPriority(int priority) = 0;

    // Appends the own maps in ascending priority, without those that already stand in `out`. GetAllMaps goes on with
    // the nested coordinators in the order they were added.
    virtual void GetMaps(std::vector<AQU_I_ParameterMap*>& out) = 0;
    virtual void GetAllMaps(std::vector<AQU_I_ParameterMap*>& out) = 0;

    // Appends the names that `map` serves, whether it belongs to this coordinator or not.
    virtual void GetMapNames(AQU_I_ParameterMap* map, std::vector<I18NString>& names) = 0;

    // Appends the entries of the map name over all maps, nested ones included, in key order: per key the values of the
    // strongest map that has it, and of equal ones, unlike in a lookup, of the last; one value only, the map's last,
    // unless the user option "MultiValuesAllowed" is other than 0. Defaults take no part. 0 if there is no map at all,
    // else 1.
    virtual int GetAllEntries(const I18NString& mapName, std::vector<std::pair<I18NString, I18NString>>& entries) = 0;

protected:
    // The default of a map name, whatever the key; an empty one is none. Among own maps the one of the lowest priority
    // that has a default wins, and of equal ones the last asked; a nested coordinator's default displaces it only by a
    // greater priority.
    virtual int GetDefault(const I18NString& mapName, std::vector<I18NString>& values,
                           AQU_I_ParameterMap*& foundMap) = 0;
    virtual int GetDefault(const I18NString& mapName, I18NString& value, AQU_I_ParameterMap*& foundMap) = 0;

private:
    friend class AQU_ParameterAccessCoordinator;
};
