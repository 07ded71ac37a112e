// Enters the display texts of a load: each into the table of its locale, and if its key is an entry's id, in lower case
// among the names of the pool.
//
// Which entries may share a name is a matter of their kinds, libraries and canonical texts. Entries that have a name
// have passed that test against one another, so one of each sort speaks for all of them, and a name that very many
// entries share costs no more than another.
//
// Names are collected in the order in which they come, their bytes one behind the other, found by their hashes, and put
// in order once, at the end: a sorted map of many thousands of names that is filled one by one costs several times as
// much. Files of several locales tend to hold their texts in one order, so an entry is first sought behind the last
// one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ZBLCore/I18NLocale.h"
#include "ZBLCore/I18NString.h"

#include "QFFunctionLoaderLog.h"
#include "QFFunctionPool.h"
#include "QFTextIndex.h"

// One load's names; belongs to the thread that loads.
class AQF_NameCollector {
public:
    // The pool's entries by id are complete; no name has been entered.
    AQF_NameCollector(AQF_FunctionPool& pool, AQF_LoaderLog& log);

    // A key that the table has keeps its first text, and nothing else happens to it. A text that can't become a name of
    // its entry stays in the table.
    void AddEntryString(I18NString text, std::string_view id, const I18NLocale& locale, AQF_StringTable& table);

    // Moves the names into the pool; once, at the end.
    void Finish();

private:
    using Entry = AQF_FunctionDescription;

    // What is asked of an entry for each of its texts, so that the entry itself needn't be read.
    struct KnownEntry {
        Entry* entry;
        std::string_view id;
        bool sharesAnyName;
        bool hasLibrary;
        std::uint32_t next; // the place of the entry whose text came right behind this one's last text, or kNone
    };
    struct NamedEntry {
        std::size_t nameBegin, nameSize; // in m_nameBytes
        Entry* entry;
        // Set in the first entry of a name alone, for all entries of that name. Operators and literals, which share a
        // name with anything, don't count. The others are of one kind: the first of them, the first with a library and
        // the first without.
        const Entry* any = nullptr;
        const Entry* withLibrary = nullptr;
        const Entry* withoutLibrary = nullptr;
    };

    // Null if the key is no entry's id.
    const KnownEntry* FindEntry(std::string_view id);
    std::string_view NameOf(const NamedEntry& named) const {
        return std::string_view(m_nameBytes).substr(named.nameBegin, named.nameSize);
    }
    bool MayHaveName(const KnownEntry& known, const I18NString& name, const NamedEntry& first,
                     const AQF_StringTable& table);

    AQF_FunctionPool& m_pool;
    AQF_LoaderLog& m_log;
    std::vector<KnownEntry> m_entries; // by id
    AQF_TextIndex m_entryIndex;
    std::uint32_t m_last = AQF_TextIndex::kNone; // the place of the entry that was found last
    std::vector<NamedEntry> m_names;
    std::string m_nameBytes;
    AQF_TextIndex m_nameIndex; // the first entry of each name
};
