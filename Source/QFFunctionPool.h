// The pool: all that the catalogue has read, once for the process. Clients see it through definitions.
//
// The pool is filled by the thread that needs it first, under AQF_PoolGuard, and published when it is complete. From
// then on nothing in it changes but loadedLocales, which belongs to the holder of the guard; so lookups take no lock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ZBLCore/I18NLocale.h"
#include "ZBLCore/I18NString.h"

#include "QFFunctionDescription.h"
#include "QFTextIndex.h"

// The texts of one locale by their keys. References to texts hold as long as the table. Filled by one thread, then read
// by any.
class AQF_StringTable {
public:
    AQF_StringTable() = default;
    AQF_StringTable(const AQF_StringTable&) = delete;
    AQF_StringTable& operator=(const AQF_StringTable&) = delete;

    void Reserve(std::size_t count) { m_index.Reserve(count); }
    // Null if there is none.
    const I18NString* Find(std::string_view key) const;
    // Takes the text and answers null; or answers the text that the key has, and leaves the new one alone. The bytes of
    // a key that `outlives` the table aren't copied.
    const I18NString* Add(std::string_view key, bool outlives, I18NString& text);

private:
    struct Item {
        std::string_view key;
        I18NString text;
    };

    std::uint32_t PlaceOf(std::string_view key, std::uint32_t hash) const;

    // Deques: what is in them stays where it is.
    std::deque<Item> m_items;
    std::deque<std::string> m_keys;
    AQF_TextIndex m_index;
};

class AQF_FunctionPool {
public:
    // Sorted; equal names in the order in which they were entered.
    using NameMap = std::vector<std::pair<std::string_view, AQF_FunctionDescription*>>;

    AQF_FunctionPool();
    virtual ~AQF_FunctionPool();
    AQF_FunctionPool(const AQF_FunctionPool&) = delete;
    AQF_FunctionPool& operator=(const AQF_FunctionPool&) = delete;

    // The process's pool, read from its files if there is none. A failure of reading passes out, and the next call
    // reads again. Any thread.
    static AQF_FunctionPool* GetInstance();

    // Enters the locale among those that are loaded. One that has no string files is logged, the first time; the texts
    // of all others were read with the pool. Any thread.
    void LoadLocale(const I18NLocale& locale);

    // Lookups; all are for any thread once the pool is published.

    // Case-sensitive; groups aren't found. Null if there is none.
    AQF_FunctionDescription* FindById(const I18NString& id) const {
        const auto found = entriesById.find(id);
        return found != entriesById.end() ? found->second : nullptr;
    }
    // The entries of a display name, lower-cased here, in the order in which they were entered.
    std::pair<NameMap::const_iterator, NameMap::const_iterator> FindByName(const I18NString& name) const;
    // The locale's texts, or null.
    const AQF_StringTable* FindTexts(const I18NLocale& locale) const;
    bool HasVendor(const I18NString& vendor) const;
    bool HasInterface(const I18NString& upperCode) const { return interfaces.contains(upperCode); }

    std::vector<I18NString> definitionFiles;
    std::map<I18NString, std::vector<I18NString>> descriptionFiles;
    std::vector<I18NLocale> loadedLocales;
    std::vector<I18NString> vendors;
    // In upper case.
    std::set<I18NString> interfaces;
    std::unique_ptr<AQF_FunctionDescription> root;
    std::map<I18NString, AQF_FunctionDescription*> entriesById;
    // By display name in lower case, of which the bytes stand in nameBytes.
    NameMap entriesByName;
    std::string nameBytes;
    std::map<I18NString, AQF_StringTable> stringTables;
    std::map<I18NString, std::unique_ptr<AQF_LibraryDescription>> libraries;
    // The file being read, for messages.
    I18NString currentFile;
};

// The text of the key; the empty text if there is no table or no such key in it.
const I18NString& AQF_FindText(const AQF_StringTable* texts, const I18NString& key);

// What a node without a description answers for its parameter types: empty, and one for the life of the process.
const std::vector<I18NString>& AQF_GetEmptyStringVector();
