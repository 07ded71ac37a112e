// Where parameters come from: a map answers what stands under a key of a named map, and may serve more than one map
// name. Those who need a parameter don't ask a map but a coordinator of many (AQU_I_ParameterAccessCoordinator).
//
// Every operation that answers an int answers one of these, and callers test for == 1:
//      1  success, or found
//     -1  the map name is served, but the key is missing
//     -2  the map name is not served here
//     -4  the configuration file behind the map cannot be used
//      0  a map of this kind has no such operation
// An operation that takes a key and no map name means the map "_env". Output vectors are appended to, never cleared.
#pragma once

#include <utility>
#include <vector>

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

// One thread at a time: a map that is being changed must not be read meanwhile. A map knows nothing of the coordinators
// that refer to it, so whoever made it deletes it when none of them is in use any more.
class BRINDLE_API AQU_I_ParameterMap {
public:
    AQU_I_ParameterMap() = default;
    explicit AQU_I_ParameterMap(int initialPriority) : priority(initialPriority) {}

    virtual ~AQU_I_ParameterMap();

    // `value` is written only where the answer is 1.
    virtual int Get(const I18NString& key, I18NString& value) = 0;

    // All values of the key, in the order they were added. A map that does not override this answers 0 and stays
    // invisible to every lookup of several values.
    virtual int Get(const I18NString& mapName, const I18NString& key, std::vector<I18NString>& values);

    virtual int Get(const I18NString& mapName, const I18NString& key, I18NString& value) = 0;

    // Appends the map names that this object serves.
    virtual void GetMapNames(std::vector<I18NString>& names) = 0;

    // Appends a pair of key and value for each entry, in key order.
    virtual int GetAllEntries(const I18NString& mapName, std::vector<std::pair<I18NString, I18NString>>& entries) = 0;

    // The base does nothing. A map name that the object does not serve is passed over in silence.
    virtual void SetDefault(const I18NString& mapName, const I18NString& value);

    // The stronger of two maps is the one of the greater number. A coordinator walks its maps by the priority they had
    // when they were added, but settles between answers by the priority they have now.
    int GetPriority() const { return priority; }
    void SetPriority(int newPriority) { priority = newPriority; }

protected:
    // The value that stands in for any missing key of the map name. The base of the form for several values answers 0.
    virtual int GetDefault(const I18NString& mapName, std::vector<I18NString>& values);
    virtual int GetDefault(const I18NString& mapName, I18NString& value) = 0;

private:
    friend class AQU_ParameterAccessCoordinator;

    int priority = 0;
};
