// Ranges of texts that are equal so far wait in a list, so that a long common beginning costs no machine stack.
#include "QFFunctionLoaderOrder.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

namespace {

constexpr std::size_t kDigitBytes = 8;
// Up to here a sort by comparison is quicker.
constexpr std::size_t kShortRange = 256;

} // namespace

std::vector<std::uint32_t> AQF_TextOrder::Sort() {
    for (std::uint32_t place = 0; place < m_texts.size(); ++place)
        m_keys.push_back(MakeKey(m_texts[place], 0, place));
    std::vector<Range> open{{0, m_keys.size(), 0}};
    while (!open.empty()) {
        const Range range = open.back();
        open.pop_back();
        SortRange(range);
        OpenEqualTexts(range, open);
    }
    std::vector<std::uint32_t> places;
    places.reserve(m_keys.size());
    for (const Key& key : m_keys)
        places.push_back(key.place);
    return places;
}

// Of a sorted range: texts that are equal in the digit, and go on behind it, become ranges of their next digit.
void AQF_TextOrder::OpenEqualTexts(const Range& range, std::vector<Range>& open) {
    for (std::size_t first = range.begin, behind; first < range.end; first = behind) {
        behind = first + 1;
        while (behind < range.end && HasSameDigit(m_keys[first], m_keys[behind]))
            ++behind;
        if (behind - first == 1 || m_keys[first].usedBytes < kDigitBytes) continue;
        const std::size_t offsetBytes = range.offsetBytes + kDigitBytes;
        for (std::size_t i = first; i < behind; ++i)
            m_keys[i] = MakeKey(m_texts[m_keys[i].place], offsetBytes, m_keys[i].place);
        open.push_back({first, behind, offsetBytes});
    }
}

AQF_TextOrder::Key AQF_TextOrder::MakeKey(std::string_view text, std::size_t offsetBytes, std::uint32_t place) {
    const std::string_view rest = text.substr(offsetBytes, kDigitBytes);
    Key key{0, static_cast<std::uint32_t>(rest.size()), place};
    for (const char byte : rest)
        key.digit = key.digit << 8 | static_cast<unsigned char>(byte);
    if (!rest.empty()) key.digit <<= 8 * (kDigitBytes - rest.size());
    return key;
}

bool AQF_TextOrder::HasSameDigit(const Key& a, const Key& b) {
    return a.digit == b.digit && a.usedBytes == b.usedBytes;
}

void AQF_TextOrder::SortRange(const Range& range) {
    if (range.end - range.begin > kShortRange) return SortByBytes(range);
    const auto begin = m_keys.begin();
    std::sort(begin + static_cast<std::ptrdiff_t>(range.begin), begin + static_cast<std::ptrdiff_t>(range.end),
              [](const Key& a, const Key& b) {
                  return std::tie(a.digit, a.usedBytes, a.place) < std::tie(b.digit, b.usedBytes, b.place);
              });
}

// From the last byte to the first, each time keeping the order of equals. The number of used bytes comes before all of
// them: it tells a text that ends from one that has zeros there.
void AQF_TextOrder::SortByBytes(const Range& range) {
    constexpr std::size_t kPasses = kDigitBytes + 1;
    const auto byteOf = [](const Key& key, std::size_t pass) {
        return static_cast<unsigned char>(pass == 0 ? key.usedBytes : key.digit >> (8 * (pass - 1)));
    };
    std::array<std::array<std::size_t, 256>, kPasses> counts{};
    for (std::size_t i = range.begin; i < range.end; ++i)
        for (std::size_t pass = 0; pass < kPasses; ++pass)
            ++counts[pass][byteOf(m_keys[i], pass)];
    m_other.resize(m_keys.size());
    for (std::size_t pass = 0; pass < kPasses; ++pass) {
        if (counts[pass][byteOf(m_keys[range.begin], pass)] == range.end - range.begin) continue;
        std::size_t next = range.begin;
        for (std::size_t& count : counts[pass])
            next += std::exchange(count, next);
        for (std::size_t i = range.begin; i < range.end; ++i)
            m_other[counts[pass][byteOf(m_keys[i], pass)]++] = m_keys[i];
        const auto from = m_other.begin() + static_cast<std::ptrdiff_t>(range.begin);
        std::copy(from, from + static_cast<std::ptrdiff_t>(range.end - range.begin),
                  m_keys.begin() + static_cast<std::ptrdiff_t>(range.begin));
    }
}
