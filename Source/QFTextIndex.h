// Finds texts by their bytes: a hash table with linear probing over texts that stand elsewhere. It holds the place of
// each text and half of its hash, by which most others are passed over unread. Filled by one thread, then read by any.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

class AQF_TextIndex {
public:
    static constexpr std::uint32_t kNone = UINT32_MAX;

    static std::uint32_t HashOf(std::string_view text) {
        return static_cast<std::uint32_t>(std::hash<std::string_view>()(text));
    }

    void Reserve(std::size_t count) {
        while (m_slots.size() < 2 * count)
            Grow();
    }

    // The place, of those that were added with this hash, for which `isIt` holds; else kNone.
    template <class IsIt>
    std::uint32_t Find(std::uint32_t hash, const IsIt& isIt) const {
        if (m_slots.empty()) return kNone;
        for (std::size_t i = hash & Mask(); m_slots[i].place != kNone; i = (i + 1) & Mask())
            if (m_slots[i].hash == hash && isIt(m_slots[i].place)) return m_slots[i].place;
        return kNone;
    }

    // The text must not be among those that were added.
    void Add(std::uint32_t hash, std::uint32_t place) {
        if (m_slots.size() < 2 * (m_count + 1)) Grow();
        Put({hash, place});
        ++m_count;
    }

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t place = kNone;
    };

    std::size_t Mask() const { return m_slots.size() - 1; }

    void Put(Slot slot) {
        std::size_t i = slot.hash & Mask();
        while (m_slots[i].place != kNone)
            i = (i + 1) & Mask();
        m_slots[i] = slot;
    }

    void Grow() {
        std::vector<Slot> grown(m_slots.empty() ? 16 : 2 * m_slots.size());
        m_slots.swap(grown);
        for (const Slot& slot : grown)
            if (slot.place != kNone) Put(slot);
    }

    std::vector<Slot> m_slots; // a power of two, at most half of them in use
    std::size_t m_count = 0;
};
