#include "ZBLCore/I18NUtf8.h"

#include <algorithm>
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

struct Sequence {
    std::size_t length;
    bool wellFormed;
};

// Reads one sequence at a byte above 0x7F: a character, or the maximal subpart that could still have begun one. The
// lead byte alone decides the length and which second bytes are legal; the narrowed ranges keep out overlong forms (E0,
// F0), surrogates (ED) and values above U+10FFFF (F4).
Sequence readSequence(const char* at, const char* end) {
    const auto lead = static_cast<unsigned char>(*at);
    if (lead < 0xC2 || lead > 0xF4) return {1, false};
    const std::size_t wanted = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    const unsigned lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    const std::size_t available = std::min(wanted, distance(at, end));
    if (available == 1) return {1, false};
    const auto second = static_cast<unsigned char>(at[1]);
    if (second < lowest || second > highest) return {1, false};
    for (std::size_t length = 2; length < available; ++length)
        if (!isContinuation(at[length])) return {length, false};
    return {available, available == wanted};
}

} // namespace

Utf8Length wellFormedPrefix(std::string_view bytes) noexcept {
    const char* const begin = bytes.data();
    const char* const end = begin + bytes.size();
    const char* at = begin;
    std::size_t continuationBytes = 0;
    while ((at = skipAscii(at, end)) != end) {
        do {
            const Sequence sequence = readSequence(at, end);
            if (!sequence.wellFormed) return {distance(begin, at), distance(begin, at) - continuationBytes};
            at += sequence.length;
            continuationBytes += sequence.length - 1;
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
        bytes.remove_prefix(readSequence(bytes.data(), bytes.data() + bytes.size()).length);
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
