// A text goes into its locale's table first. Only one that the table took, and whose entry may have the name, becomes a
// name.
#include "QFFunctionLoaderNames.h"

#include <utility>

#include "Mortise/AUT_Text.h"

#include "QFFunctionLoaderOrder.h"

namespace {

constexpr std::uint32_t kNone = AQF_TextIndex::kNone;

bool SharesAnyName(EFunctionType kind) { return kind == FT_operator || kind == FT_literal; }

bool CanShareName(EFunctionType kind) {
    return kind == FT_function || kind == FT_summary || kind == FT_operation || kind == FT_format;
}

} // namespace

AQF_NameCollector::AQF_NameCollector(AQF_FunctionPool& pool, AQF_LoaderLog& log) : m_pool(pool), m_log(log) {
    m_entries.reserve(pool.entriesById.size());
    m_entryIndex.Reserve(pool.entriesById.size());
    for (const auto& [id, entry] : pool.entriesById) {
        m_entryIndex.Add(AQF_TextIndex::HashOf(entry->id.bytes()), static_cast<std::uint32_t>(m_entries.size()));
        m_entries.push_back({entry, entry->id.bytes(), SharesAnyName(entry->kind), entry->library != nullptr, kNone});
    }
}

void AQF_NameCollector::AddEntryString(I18NString text, std::string_view id, const I18NLocale& locale,
                                       AQF_StringTable& table) {
    const KnownEntry* const known = FindEntry(id);
    const I18NString name = known ? AUT_ToLower(text, AUT_DefaultLocale()) : I18NString();
    if (const I18NString* const kept = table.Add(known ? known->id : id, known != nullptr, text))
        return m_log.TextIsGivenAgain(locale, I18NString(id), text, *kept);
    if (!known) return;
    const std::uint32_t hash = AQF_TextIndex::HashOf(name.bytes());
    std::uint32_t first =
        m_nameIndex.Find(hash, [&](std::uint32_t place) { return NameOf(m_names[place]) == name.bytes(); });
    if (first == kNone) {
        first = static_cast<std::uint32_t>(m_names.size());
        m_nameIndex.Add(hash, first);
    } else if (!MayHaveName(*known, name, m_names[first], table)) {
        return;
    }
    m_names.push_back({m_nameBytes.size(), name.bytes().size(), known->entry});
    m_nameBytes += name.bytes();
    if (known->sharesAnyName) return;
    NamedEntry& holder = m_names[first];
    if (!holder.any) holder.any = known->entry;
    if (const Entry*& like = known->hasLibrary ? holder.withLibrary : holder.withoutLibrary; !like) like = known->entry;
}

const AQF_NameCollector::KnownEntry* AQF_NameCollector::FindEntry(std::string_view id) {
    const std::uint32_t awaited = m_last != kNone ? m_entries[m_last].next : kNone;
    if (awaited != kNone && m_entries[awaited].id == id) return &m_entries[m_last = awaited];
    const std::uint32_t found =
        m_entryIndex.Find(AQF_TextIndex::HashOf(id), [&](std::uint32_t place) { return m_entries[place].id == id; });
    if (found == kNone) return nullptr;
    if (m_last != kNone) m_entries[m_last].next = found;
    return &m_entries[m_last = found];
}

bool AQF_NameCollector::MayHaveName(const KnownEntry& known, const I18NString& name, const NamedEntry& first,
                                    const AQF_StringTable& table) {
    if (!first.any || known.sharesAnyName) return true;
    const Entry& entry = *known.entry;
    if (!CanShareName(entry.kind)) {
        m_log.KindHasNoName(entry, name);
        return false;
    }
    const auto textOf = [&table](const Entry& other) -> const I18NString& { return AQF_FindText(&table, other.id); };
    if (entry.kind != first.any->kind) {
        m_log.KindsDiffer(entry, name, *first.any, textOf(*first.any));
        return false;
    }
    if (entry.kind != FT_function) return true;
    if (entry.library) {
        if (first.withLibrary) m_log.BothHaveLibraries(entry, name);
        return !first.withLibrary;
    }
    const Entry* const other = first.withoutLibrary;
    if (!other || other->canonical == entry.canonical) return true;
    m_log.CanonicalsDiffer(entry, name, *other, textOf(*other));
    return false;
}

void AQF_NameCollector::Finish() {
    m_pool.nameBytes = std::move(m_nameBytes);
    AQF_TextOrder order;
    order.Reserve(m_names.size());
    const auto nameOf = [this](const NamedEntry& named) {
        return std::string_view(m_pool.nameBytes).substr(named.nameBegin, named.nameSize);
    };
    for (const NamedEntry& named : m_names)
        order.Add(nameOf(named));
    m_pool.entriesByName.reserve(m_names.size());
    for (const std::uint32_t place : order.Sort())
        m_pool.entriesByName.emplace_back(nameOf(m_names[place]), m_names[place].entry);
}
