#include "ZBLCore/I18NUtf8.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace brindle_platform {

namespace {

// Bytes are looked at eight at a time. A code point begins at every byte that isn't a continuation byte, 10xxxxxx.
constexpr std::size_t kWord = sizeof(std::uint64_t);
constexpr std::uint64_t kHighBits = 0x8080808080808080;
constexpr std::uint64_t kLowBits = 0x0101010101010101;

std::uint64_t loadWord(const char* at) {
    std::uint64_t word;
    std::memcpy(&word, at, kWord);
    return word;
}

// One in the lowest bit of every byte where a code point begins.
std::uint64_t beginMarks(std::uint64_t word) { return (~word >> 7 | word >> 6) & kLowBits; }

std::size_t countBegins(std::uint64_t word) { return static_cast<std::size_t>(beginMarks(word) * kLowBits >> 56); }

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

std::size_t distance(const char* from, const char* to) { return static_cast<std::size_t>(to - from); }

// The ASCII bytes from `at` on.
const char* skipAscii(const char* at, const char* end) {
    while (distance(at, end) >= 2 * kWord && ((loadWord(at) | loadWord(at + kWord)) & kHighBits) == 0)
        at += 2 * kWord;
    while (at != end && static_cast<unsigned char>(*at) < 0x80)
        ++at;
    return at;
}

// The legal second bytes behind a lead byte. Narrowed ranges keep out overlong forms (E0, F0), surrogates (ED) and
// values above U+10FFFF (F4); none is legal behind a byte that leads nothing. The further bytes may be any continuation
// bytes. "None" is all zeros: g++ 12 leaves the end of such a table zero whatever its members' defaults are.
struct SecondByte {
    unsigned char lowest;
    unsigned char count;
};

// For the lead bytes from 0x80 on.
constexpr std::array<SecondByte, 128> kSecondBytes = [] {
    std::array<SecondByte, 128> ranges{};
    for (std::size_t lead = 0xC2; lead <= 0xF4; ++lead)
        ranges[lead - 0x80] = {0x80, 0x40};
    ranges[0xE0 - 0x80] = {0xA0, 0x20};
    ranges[0xED - 0x80] = {0x80, 0x20};
    ranges[0xF0 - 0x80] = {0x90, 0x30};
    ranges[0xF4 - 0x80] = {0x80, 0x10};
    return ranges;
}();

// Whether the byte behind the lead byte at `at` may follow it.
bool hasLegalSecond(const char* at) {
    const SecondByte& range = kSecondBytes[static_cast<unsigned char>(at[0]) - 0x80u];
    return static_cast<unsigned char>(static_cast<unsigned char>(at[1]) - range.lowest) < range.count;
}

// The length of the character that begins with a byte above 0x7F; 0 if it is ill-formed. The length comes from
// branches, which the processor foretells, and not from the table, for which the next character would have to wait.
std::size_t characterLength(const char* at, const char* end) {
    const std::size_t available = distance(at, end);
    const auto lead = static_cast<unsigned char>(*at);
    if (available < 2 || !hasLegalSecond(at)) return 0;
    if (lead < 0xE0) return 2;
    if (available < 3 || !isContinuation(at[2])) return 0;
    if (lead < 0xF0) return 3;
    return available < 4 || !isContinuation(at[3]) ? 0 : 4;
}

// The length of the maximal subpart of an ill-formed character: the bytes that could still have begun one.
std::size_t illFormedLength(const char* at, const char* end) {
    const std::size_t available = distance(at, end);
    if (available == 1 || !hasLegalSecond(at)) return 1;
    std::size_t length = 2;
    while (length < available && isContinuation(at[length]))
        ++length;
    return length;
}

} // namespace

Utf8Length wellFormedPrefix(std::string_view bytes) noexcept {
    const char* const begin = bytes.data();
    const char* const end = begin + bytes.size();
    const char* at = begin;
    std::size_t continuationBytes = 0;
    while ((at = skipAscii(at, end)) != end) {
        do {
            const std::size_t length = characterLength(at, end);
            if (length == 0) return {distance(begin, at), distance(begin, at) - continuationBytes};
            at += length;
            continuationBytes += length - 1;
        } while (at != end && static_cast<unsigned char>(*at) >= 0x80);
    }
    return {bytes.size(), bytes.size() - continuationBytes};
}

std::size_t appendRepaired(std::string& out, std::string_view bytes, std::size_t maxBytes) {
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
    std::size_t codePoints = 0;
    while (true) {
        const Utf8Length prefix = wellFormedPrefix(bytes);
        if (prefix.bytes > maxBytes - out.size()) return std::string::npos;
        out.append(bytes.substr(0, prefix.bytes));
        codePoints += prefix.codePoints;
        bytes.remove_prefix(prefix.bytes);
        if (bytes.empty()) return codePoints;
        if (kReplacement.size() > maxBytes - out.size()) return std::string::npos;
        out.append(kReplacement);
        ++codePoints;
        bytes.remove_prefix(illFormedLength(bytes.data(), bytes.data() + bytes.size()));
    }
}

std::size_t writeUtf8(I18NCodePoint scalar, char* out) noexcept {
    const auto tail = [scalar](int shift) { return static_cast<char>(0x80 | (scalar >> shift & 0x3F)); };
    if (scalar < 0x80) {
        out[0] = static_cast<char>(scalar);
        return 1;
    }
    if (scalar < 0x800) {
        out[0] = static_cast<char>(0xC0 | scalar >> 6);
        out[1] = tail(0);
        return 2;
    }
    if (scalar < 0x10000) {
        out[0] = static_cast<char>(0xE0 | scalar >> 12);
        out[1] = tail(6);
        out[2] = tail(0);
        return 3;
    }
    out[0] = static_cast<char>(0xF0 | scalar >> 18);
    out[1] = tail(12);
    out[2] = tail(6);
    out[3] = tail(0);
    return 4;
}

std::size_t countCodePoints(std::string_view wellFormed) noexcept {
    const char* at = wellFormed.data();
    const char* const end = at + wellFormed.size();
    std::size_t count = 0;
    while (distance(at, end) >= kWord) {
        // Each byte of `marks` counts its own column, so that the columns need adding up once per 255 words.
        std::uint64_t marks = 0;
        const std::size_t words = std::min<std::size_t>(distance(at, end) / kWord, 255);
        for (std::size_t word = 0; word < words; ++word)
            marks += beginMarks(loadWord(at + word * kWord));
        constexpr std::uint64_t kEvenBytes = 0x00FF00FF00FF00FF;
        const std::uint64_t pairs = (marks & kEvenBytes) + (marks >> 8 & kEvenBytes);
        count += static_cast<std::size_t>(pairs * 0x0001000100010001 >> 48);
        at += words * kWord;
    }
    for (; at != end; ++at)
        count += isContinuation(*at) ? 0 : 1;
    return count;
}

const char* stepForward(const char* at, const char* end, std::size_t count) noexcept {
    while (distance(at, end) >= kWord) {
        const std::size_t begins = countBegins(loadWord(at));
        if (begins > count) break;
        count -= begins;
        at += kWord;
    }
    for (; at != end; ++at)
        if (!isContinuation(*at) && count-- == 0) return at;
    return end;
}

const char* stepBack(const char* begin, const char* at, std::size_t count) noexcept {
    while (distance(begin, at) >= kWord) {
        const std::size_t begins = countBegins(loadWord(at - kWord));
        if (begins >= count) break;
        count -= begins;
        at -= kWord;
    }
    while (count != 0 && at != begin)
        if (!isContinuation(*--at)) --count;
    return at;
}

} // namespace brindle_platform
