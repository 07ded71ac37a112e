#include "ZBLCore/I18NString.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <cstring>
#include <ostream>
#include <stdexcept>

#include "ZBLCore/I18NEncoding.h"
#include "ZBLCore/I18NUtf8.h"

using namespace brindle_platform;

namespace {

constexpr std::size_t kNowhere = std::string_view::npos;
constexpr std::size_t kShortPattern = 16;

I18NString::index asIndex(std::size_t count) { return static_cast<I18NString::index>(count); }

std::string_view viewOf(const char* text) { return text ? std::string_view(text) : std::string_view(); }

template <class Word>
Word wordAt(const char* at) {
    Word word;
    std::memcpy(&word, at, sizeof word);
    return word;
}

// Whether all bytes are below 0x80, looked at as two words that may overlap.
template <class Word>
bool isAsciiInTwo(std::string_view bytes) {
    constexpr auto kHighBits = static_cast<Word>(0x8080808080808080);
    const Word both = wordAt<Word>(bytes.data()) | wordAt<Word>(bytes.data() + bytes.size() - sizeof(Word));
    return (both & kHighBits) == 0;
}

// Whether the text is so short that a look tells that it is ASCII, as most names and values are.
bool isShortAscii(std::string_view bytes) {
    if (bytes.size() > 2 * sizeof(std::uint64_t)) return false;
    if (bytes.size() >= sizeof(std::uint64_t)) return isAsciiInTwo<std::uint64_t>(bytes);
    if (bytes.size() >= sizeof(std::uint32_t)) return isAsciiInTwo<std::uint32_t>(bytes);
    unsigned bits = 0;
    for (const char byte : bytes)
        bits |= static_cast<unsigned char>(byte);
    return bits < 0x80;
}

std::string_view shortAsciiOrNothing(std::string_view bytes) {
    return isShortAscii(bytes) ? bytes : std::string_view();
}

// Slides a window from the end to the start and keeps its hash, the sum of byte[k] * kBase^k modulo a prime; only a
// window with the pattern's hash is compared.
std::size_t lastOccurrenceOfLong(std::string_view text, std::string_view pattern) {
    constexpr std::uint64_t kPrime = 0x7FFFFFFF;
    constexpr std::uint64_t kBase = 48271;
    const auto hashOf = [](std::string_view bytes) {
        std::uint64_t hash = 0;
        for (std::size_t at = bytes.size(); at-- > 0;)
            hash = (hash * kBase + static_cast<unsigned char>(bytes[at])) % kPrime;
        return hash;
    };
    std::uint64_t lastFactor = 1;
    for (std::size_t at = 1; at < pattern.size(); ++at)
        lastFactor = lastFactor * kBase % kPrime;

    const std::uint64_t wanted = hashOf(pattern);
    std::size_t start = text.size() - pattern.size();
    std::uint64_t hash = hashOf(text.substr(start));
    while (hash != wanted || text.compare(start, pattern.size(), pattern) != 0) {
        if (start == 0) return kNowhere;
        --start;
        const std::uint64_t leaving = static_cast<unsigned char>(text[start + pattern.size()]) * lastFactor % kPrime;
        hash = ((hash + kPrime - leaving) * kBase + static_cast<unsigned char>(text[start])) % kPrime;
    }
    return start;
}

std::size_t lastOccurrence(std::string_view text, std::string_view pattern) {
    if (text.size() < pattern.size()) return kNowhere;
    return pattern.size() <= kShortPattern ? text.rfind(pattern) : lastOccurrenceOfLong(text, pattern);
}

} // namespace

// The standard search tries the pattern at each place where its first byte stands, which is quick, and costs the
// product of both lengths on runs of one letter. So it serves patterns of a bounded length, and a linear search the
// others.
std::size_t I18NFindBytes(std::string_view text, std::string_view pattern, std::size_t from) noexcept {
    if (pattern.empty()) return kNowhere;
    if (pattern.size() == 1) return text.find(pattern.front(), from);
    if (pattern.size() <= kShortPattern) return text.find(pattern, from);
    if (from > text.size()) return kNowhere;
    const void* hit = memmem(text.data() + from, text.size() - from, pattern.data(), pattern.size());
    return hit ? static_cast<std::size_t>(static_cast<const char*>(hit) - text.data()) : kNowhere;
}

I18NString::I18NString(const char* utf8) : I18NString(viewOf(utf8)) {}

I18NString::I18NString(const char* bytes, std::size_t count)
    : I18NString(bytes ? std::string_view(bytes, count) : std::string_view()) {}

I18NString::I18NString(std::string_view utf8) : m_bytes(shortAsciiOrNothing(utf8)), m_size(asIndex(m_bytes.size())) {
    if (m_bytes.size() != utf8.size()) appendUtf8(utf8);
}

I18NString::I18NString(const char* bytes, std::size_t count, const char* encoding)
    : I18NString(decodeText({bytes, bytes ? count : 0}, encoding)) {}

I18NString::I18NString(I18NCodePoint codePoint, index count) {
    if (count < 1) return;
    char character[4];
    const std::size_t length = writeUtf8(scalarValue(codePoint), character);
    if (static_cast<std::size_t>(count) > kMaxBytes / length) throwTooLong();
    if (length == 1) {
        m_bytes.assign(static_cast<std::size_t>(count), character[0]);
    } else {
        m_bytes.reserve(static_cast<std::size_t>(count) * length);
        for (index made = 0; made < count; ++made)
            m_bytes.append(character, length);
    }
    m_size = count;
}

I18NString::I18NString(const I18NStringIterator& from, const I18NStringIterator& to) {
    if (from < to && from.m_end == to.m_end)
        appendValidUtf8({from.base(), static_cast<std::size_t>(to.base() - from.base())});
}

I18NString I18NString::fromValidUtf8(std::string bytes) {
    const std::size_t codePoints = countCodePoints(bytes);
    return fromValidUtf8(std::move(bytes), asIndex(codePoints));
}

I18NString I18NString::fromValidUtf8(std::string bytes, index codePoints) noexcept {
    assert(asIndex(wellFormedPrefix(bytes).codePoints) == codePoints && bytes.size() <= kMaxBytes);
    I18NString text;
    text.m_bytes = std::move(bytes);
    text.m_size = codePoints;
    return text;
}

void I18NString::throwTooLong() { throw std::length_error("text of 2 GiB or more"); }

void I18NString::reserve(std::size_t byteCount) {
    if (byteCount > kMaxBytes) throwTooLong();
    m_bytes.reserve(byteCount);
}

I18NString& I18NString::appendWide(I18NCodePoint codePoint) {
    char character[4];
    const std::size_t length = writeUtf8(scalarValue(codePoint), character);
    requireRoom(length);
    m_bytes.append(character, length);
    ++m_size;
    return *this;
}

I18NString& I18NString::appendUtf8(std::string_view utf8) {
    requireRoom(utf8.size());
    const Utf8Length wellFormed = wellFormedPrefix(utf8);
    if (wellFormed.bytes == utf8.size()) {
        m_bytes.append(utf8);
        m_size += asIndex(wellFormed.codePoints);
        return *this;
    }
    std::string repaired;
    const std::size_t codePoints = appendRepaired(repaired, utf8, kMaxBytes - m_bytes.size());
    if (codePoints == kNowhere) throwTooLong();
    m_bytes.append(repaired);
    m_size += asIndex(codePoints);
    return *this;
}

I18NString& I18NString::appendValidUtf8(std::string_view utf8) {
    assert(wellFormedPrefix(utf8).bytes == utf8.size());
    requireRoom(utf8.size());
    const std::size_t codePoints = isShortAscii(utf8) ? utf8.size() : countCodePoints(utf8);
    m_bytes.append(utf8);
    m_size += asIndex(codePoints);
    return *this;
}

I18NString& I18NString::insert(index position, const I18NString& text) { return replace(position, 0, text); }

I18NString& I18NString::replace(index position, index count, const I18NString& text) {
    const index begin = clamped(position);
    const index taken = clampedCount(begin, count);
    const std::size_t beginByte = byteOffsetOf(begin);
    const std::size_t byteCount = byteOffsetBehind(beginByte, begin, begin + taken) - beginByte;
    if (text.m_bytes.size() > kMaxBytes - (m_bytes.size() - byteCount)) throwTooLong();
    const index size = m_size - taken + text.m_size;
    m_bytes.replace(beginByte, byteCount, text.m_bytes);
    m_size = size;
    return *this;
}

I18NString I18NString::substring(index begin, index end) const {
    const index from = clamped(begin);
    const index to = end == -1 ? m_size : clamped(end);
    if (to <= from) return {};
    const std::size_t beginByte = byteOffsetOf(from);
    const std::size_t endByte = byteOffsetBehind(beginByte, from, to);
    I18NString piece;
    piece.m_bytes.assign(m_bytes, beginByte, endByte - beginByte);
    piece.m_size = to - from;
    return piece;
}

I18NString I18NString::substr(index position, index count) const {
    const index begin = clamped(position);
    return substring(begin, begin + clampedCount(begin, count));
}

I18NString::index I18NString::find(const I18NString& text, index from) const noexcept {
    if (text.empty() || from >= m_size) return -1;
    const index begin = clamped(from);
    const std::size_t beginByte = byteOffsetOf(begin);
    const std::string_view searched = bytes().substr(beginByte);
    const std::size_t hit = I18NFindBytes(searched, text.m_bytes);
    if (hit == kNowhere) return -1;
    return begin + asIndex(isAscii() ? hit : countCodePoints(searched.substr(0, hit)));
}

I18NString::index I18NString::rfind(const I18NString& text) const noexcept {
    if (text.empty()) return -1;
    const std::size_t hit = lastOccurrence(m_bytes, text.m_bytes);
    return hit == kNowhere ? -1 : positionOf(hit);
}

I18NCodePoint I18NString::at(index position) const noexcept {
    if (position < 0 || position >= m_size) return 0;
    const char* const bytes = m_bytes.data();
    return *I18NStringIterator(bytes, bytes + m_bytes.size(), bytes + byteOffsetOf(position));
}

std::size_t I18NString::byteOffsetOf(index position) const noexcept {
    const index target = clamped(position);
    if (isAscii()) return static_cast<std::size_t>(target);
    const char* const begin = m_bytes.data();
    const char* const end = begin + m_bytes.size();
    const char* const at = target <= m_size / 2 ? stepForward(begin, end, static_cast<std::size_t>(target))
                                                : stepBack(begin, end, static_cast<std::size_t>(m_size - target));
    return static_cast<std::size_t>(at - begin);
}

// byteOffsetOf(end) for an `end` not in front of `begin`, which may be the nearest place to walk from.
std::size_t I18NString::byteOffsetBehind(std::size_t beginByte, index begin, index end) const noexcept {
    if (isAscii() || end - begin > m_size - end) return byteOffsetOf(end);
    const char* const bytes = m_bytes.data();
    const char* const at =
        stepForward(bytes + beginByte, bytes + m_bytes.size(), static_cast<std::size_t>(end - begin));
    return static_cast<std::size_t>(at - bytes);
}

I18NString::index I18NString::positionOf(std::size_t byteOffset) const noexcept {
    const std::size_t offset = std::min(byteOffset, m_bytes.size());
    if (isAscii()) return asIndex(offset);
    if (offset <= m_bytes.size() / 2) return asIndex(countCodePoints(bytes().substr(0, offset)));
    return m_size - asIndex(countCodePoints(bytes().substr(offset)));
}

I18NString::index I18NString::clampedCount(index position, index count) const noexcept {
    const index rest = m_size - position;
    return count == -1 || count > rest ? rest : std::max<index>(count, 0);
}

std::string I18NString::encode(const char* encoding) const { return encodeText(*this, encoding); }

// Equal bytes decide at once. Otherwise only an ill-formed `utf8` can still be equal, by its replacement characters.
bool I18NString::equals(const char* utf8) const {
    const std::string_view other = viewOf(utf8);
    if (other == m_bytes) return true;
    if (isAscii() || wellFormedPrefix(other).bytes == other.size()) return false;
    return *this == I18NString(other);
}

I18NString operator+(const I18NString& a, const I18NString& b) {
    I18NString sum;
    sum.reserve(a.bytes().size() + b.bytes().size());
    sum.append(a).append(b);
    return sum;
}

std::ostream& operator<<(std::ostream& out, const I18NString& text) {
    const std::string_view bytes = text.bytes();
    out.width(0);
    return out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}
