// The parameter map that an application fills itself, in memory:
//
//     AQU_ParameterMapApp parameters("_env", 0);
//     parameters.Set("country", "Norway");
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "ZBLCore/I18NString.h"

#include "AQU_I_ParameterMap.h"
#include "BrindleApi.h"

// Serves exactly the one map name given to its constructor: each operation with another map name answers -2 and changes
// nothing, and on a map not named "_env" the operations without a map name do so too. One thread at a time.
class BRINDLE_API AQU_ParameterMapApp : public AQU_I_ParameterMap {
public:
    AQU_ParameterMapApp(const I18NString& servedMapName, int initialPriority);

    ~AQU_ParameterMapApp() override;

    int Get(const I18NString& key, I18NString& value) override;
    int Get(const I18NString& map, const I18NString& key, std::vector<I18NString>& values) override;
    // Of several values the one added last.
    int Get(const I18NString& map, const I18NString& key, I18NString& value) override;
    void GetMapNames(std::vector<I18NString>& names) override;
    int GetAllEntries(const I18NString& map, std::vector<std::pair<I18NString, I18NString>>& out) override;

    // Adds one more default value; earlier ones stay, and none can be removed.
    void SetDefault(const I18NString& map, const I18NString& value) override;

    // The values of all SetDefault calls in order, or the last of them. Without any the answer is 1 as well, with
    // nothing appended or the empty string.
    int GetDefault(const I18NString& map, std::vector<I18NString>& values) override;
    int GetDefault(const I18NString& map, I18NString& value) override;

    virtual int Get(const I18NString& key, std::vector<I18NString>& values);

    // Replaces the values of the key by this one, unless the user option "MultiValuesAllowed" of "General Options" is
    // other than 0: then the value is added behind the others. The option is read on each call.
    virtual int Set(const I18NString& key, const I18NString& value);
    virtual int Set(const I18NString& map, const I18NString& key, const I18NString& value);

    // Removes every value of the key.
    virtual int Delete(const I18NString& key);
    virtual int Delete(const I18NString& map, const I18NString& key);

private:
    std::multimap<I18NString, I18NString> entries;
    I18NString mapName;
    std::vector<I18NString> defaults;
};
