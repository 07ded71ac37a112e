// What the pool answers once it has been read.
#include "QFFunctionPool.h"

#include <algorithm>

#include "Mortise/AUT_Text.h"

AQF_FunctionPool::AQF_FunctionPool() = default;
AQF_FunctionPool::~AQF_FunctionPool() = default;

std::pair<AQF_FunctionPool::NameMap::const_iterator, AQF_FunctionPool::NameMap::const_iterator>
AQF_FunctionPool::FindByName(const I18NString& name) const {
    const I18NString lower = AUT_ToLower(name, AUT_DefaultLocale());
    struct ByName {
        bool operator()(const NameMap::value_type& entry, std::string_view sought) const {
            return entry.first < sought;
        }
        bool operator()(std::string_view sought, const NameMap::value_type& entry) const {
            return sought < entry.first;
        }
    };
    return std::equal_range(entriesByName.begin(), entriesByName.end(), lower.bytes(), ByName());
}

// Every locale that has texts is loaded before the pool is published, so whether it is needn't be asked.
const AQF_StringTable* AQF_FunctionPool::FindTexts(const I18NLocale& locale) const {
    const auto found = stringTables.find(locale.getName());
    return found != stringTables.end() ? &found->second : nullptr;
}

bool AQF_FunctionPool::HasVendor(const I18NString& vendor) const {
    return std::find(vendors.begin(), vendors.end(), vendor) != vendors.end();
}

const I18NString* AQF_StringTable::Find(std::string_view key) const {
    const std::uint32_t place = PlaceOf(key, AQF_TextIndex::HashOf(key));
    return place != AQF_TextIndex::kNone ? &m_items[place].text : nullptr;
}

const I18NString* AQF_StringTable::Add(std::string_view key, bool outlives, I18NString& text) {
    const std::uint32_t hash = AQF_TextIndex::HashOf(key);
    if (const std::uint32_t place = PlaceOf(key, hash); place != AQF_TextIndex::kNone) return &m_items[place].text;
    if (!outlives) key = m_keys.emplace_back(key);
    m_index.Add(hash, static_cast<std::uint32_t>(m_items.size()));
    m_items.push_back({key, std::move(text)});
    return nullptr;
}

std::uint32_t AQF_StringTable::PlaceOf(std::string_view key, std::uint32_t hash) const {
    return m_index.Find(hash, [&](std::uint32_t place) { return m_items[place].key == key; });
}

const I18NString& AQF_FindText(const AQF_StringTable* texts, const I18NString& key) {
    if (texts != nullptr) {
        if (const I18NString* const text = texts->Find(key.bytes())) return *text;
    }
    return AUT_GetEmptyString();
}

const std::vector<I18NString>& AQF_GetEmptyStringVector() {
    static const auto* const empty = new std::vector<I18NString>;
    return *empty;
}
