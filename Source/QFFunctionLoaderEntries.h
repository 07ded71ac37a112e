// Reads the groups and entries of a definition file into the pool's tree.
//
// The tree is walked with a stack of its own. In an entry, an element without a meaning of its own becomes a property
// of that name; in a group it is passed over.
#pragma once

#include <map>
#include <set>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "ZBLCore/I18NString.h"
#include "ZBLIDOM/ZBLIDOM_View.h"

#include "QFFunctionLoaderLog.h"
#include "QFFunctionPool.h"

// One load's reader; belongs to the thread that loads. An exception leaves the pool unfinished, but fit to be deleted.
class AQF_EntryReader {
public:
    AQF_EntryReader(AQF_FunctionPool& pool, AQF_LoaderLog& log) : m_pool(pool), m_log(log) {}

    // Reads all that is in the element into the pool's root. A group that is there already, from this file or an
    // earlier one, is added to; an entry whose id is taken is passed over.
    void ReadRoot(ZBLIDOM_View element);

    // Enters all that was read into the pool's entries by id; once, at the end.
    void Finish();

private:
    // A group, and the first of its child elements that isn't read yet.
    struct OpenGroup {
        AQF_FunctionDescription* group;
        ZBLIDOM_View next;
    };

    // Answers what is to be opened: the child group of that element, or none.
    AQF_FunctionDescription* ReadGroupChild(AQF_FunctionDescription& group, ZBLIDOM_View child);
    AQF_FunctionDescription& FindOrMakeGroup(AQF_FunctionDescription& parent, I18NString id);
    void ReadEntry(AQF_FunctionDescription& parent, ZBLIDOM_View element, EFunctionType kind);
    void ReadEntryChild(AQF_FunctionDescription& entry, ZBLIDOM_View child, I18NString& libraryName);
    void ReadParameter(AQF_FunctionDescription& entry, ZBLIDOM_View element);
    void ReadRules(AQF_FunctionDescription& entry, ZBLIDOM_View element);
    bool ReadRule(AQF_QosRule& rule, ZBLIDOM_View element);
    void AddVendor(AQF_FunctionDescription& description, const I18NString& vendor);
    void AddToLibrary(AQF_FunctionDescription& entry, const I18NString& libraryName);

    AQF_FunctionPool& m_pool;
    AQF_LoaderLog& m_log;
    std::vector<OpenGroup> m_open;
    std::vector<AQF_FunctionDescription*> m_entries;
    std::unordered_set<std::string_view> m_ids;
    std::set<I18NString> m_vendors;
    // By parent and id, so that a folder with many folders in it isn't searched for each of them.
    std::map<std::pair<const AQF_FunctionDescription*, I18NString>, AQF_FunctionDescription*> m_groups;
};
