// The parameter map that reads the engine's configuration file:
//
//     <VKEConfig>
//       <section name="ParameterMaps">
//         <map name="_env" priority="90">
//           <entry name="country" value="Norway"/>
//         </map>
//       </section>
//     </VKEConfig>
//
// A file holds any number of maps of any names, each for one priority, and an object sees those of its own priority. So
// one object over the file can say what outranks everything else, and another one what everything else outranks.
// The first section "ParameterMaps" anywhere below the root counts, with the maps at any depth below it and the entries
// at any depth below them. Everything else in the file is passed over.
//
// The file is sought as "../configuration/" + its name below the program directory, then in the program directory
// itself. It is read once, by the constructor.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "ZBLCore/I18NString.h"
#include "ZBLIDOM/ZBLIDOM_Node.h"

#include "AQU_I_ParameterMap.h"
#include "BrindleApi.h"

// Reading takes two ways. In memory the maps are taken out of the document once; else each lookup walks the document.
// They differ in three points: of like-named entries memory answers the last, the document the first; in memory " 90"
// and "090" are the priority 90 (and a text that is no number is 0), in the document they aren't; and without a section
// "ParameterMaps" memory answers -2, the document -1.
//
// Defaults and values in lists are not offered, so a lookup of several values never finds anything here. Several
// threads may read one object.
class BRINDLE_API AQU_ParameterMapVKE : public AQU_I_ParameterMap {
public:
    // The path of the file that an object for this name reads, below the program directory; empty if there is none.
    static I18NString FindFile(const I18NString& fileName);

    // `configuredPriority` has no effect. A file that isn't there or is empty is logged and leaves an object on which
    // every Get of one value answers -4. A file that can't be read or isn't well-formed throws ZBLIDOM_Exception, which
    // tells path, line and column.
    AQU_ParameterMapVKE(const I18NString& fileName, int configuredPriority, int initialPriority, bool inMemory);

    ~AQU_ParameterMapVKE() override;

    AQU_ParameterMapVKE(const AQU_ParameterMapVKE&) = delete;
    AQU_ParameterMapVKE& operator=(const AQU_ParameterMapVKE&) = delete;

    using AQU_I_ParameterMap::Get;
    int Get(const I18NString& key, I18NString& value) override;
    int Get(const I18NString& map, const I18NString& key, I18NString& value) override;

    // An object that doesn't work in memory knows no names and answers -2 for the entries of any.
    void GetMapNames(std::vector<I18NString>& names) override;
    int GetAllEntries(const I18NString& map, std::vector<std::pair<I18NString, I18NString>>& out) override;

    // -1, and `value` stays as it is.
    using AQU_I_ParameterMap::GetDefault;
    int GetDefault(const I18NString& map, I18NString& value) override;

private:
    bool OpenVKEFile();
    void LoadParameterMap2Memory();
    int GetFromMemory(const I18NString& map, const I18NString& key, I18NString& value) const;
    int GetFromDocument(const I18NString& map, const I18NString& key, I18NString& value) const;
    // The first element of that tag below the parent whose attributes of those names have those values.
    static bool findFirstChildElementWithAttributes(ZBLIDOM_Element& result, const ZBLIDOM_Element& parent,
                                                    const I18NString& tag,
                                                    const std::vector<I18NString>& attributeNames,
                                                    const std::vector<I18NString>& attributeValues);

    ZBLIDOM_Document document;
    bool fileOpen = false;
    bool inMemory;
    std::map<I18NString, std::map<I18NString, I18NString>> memoryMaps;
    I18NString fileName;
    [[maybe_unused]] int configuredPriority;
};
