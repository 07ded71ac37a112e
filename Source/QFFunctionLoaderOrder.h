// Puts many texts in the order of their bytes.
//
// Texts lie scattered in memory, and those of a catalogue begin alike, so a sort that went to two of them for each
// comparison would spend its time waiting for memory. Here eight bytes of each text at a time are a digit, sorted
// beside one another; only texts that are equal in it go on to their next digit. A long range is sorted by one byte of
// the digit after the other, in time linear in its length, a short one by comparisons.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// For one sort. One thread.
class AQF_TextOrder {
public:
    void Reserve(std::size_t count) { m_texts.reserve(count); }
    // At most 2^32 - 1 texts, which must stay where they are.
    void Add(std::string_view text) { m_texts.push_back(text); }

    // The places of the texts, counted from 0 as they were added, in the order of the texts; equal texts in the order
    // in which they were added. Time is bounded by the bytes of all texts and the logarithm of their number. Once.
    std::vector<std::uint32_t> Sort();

private:
    struct Key {
        std::uint64_t digit;
        std::uint32_t usedBytes; // of the text; the rest of the digit is zeros
        std::uint32_t place;
    };
    struct Range {
        std::size_t begin, end;  // in m_keys
        std::size_t offsetBytes; // where the digit lies in the texts
    };

    static Key MakeKey(std::string_view text, std::size_t offsetBytes, std::uint32_t place);
    static bool HasSameDigit(const Key& a, const Key& b);
    void SortRange(const Range& range);
    void OpenEqualTexts(const Range& range, std::vector<Range>& open);
    void SortByBytes(const Range& range);

    std::vector<std::string_view> m_texts;
    std::vector<Key> m_keys;
    std::vector<Key> m_other; // room for SortByBytes
};
