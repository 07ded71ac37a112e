// Work on UTF-8 bytes that I18NString and the encodings share: checking, counting, stepping, repair. Private to the
// platform library.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "ZBLCore/I18NCodePoint.h"

namespace brindle_platform {

constexpr I18NCodePoint kReplacementCharacter = 0xFFFD;

// The code point itself, or U+FFFD for a surrogate or a value above U+10FFFF.
constexpr I18NCodePoint scalarValue(I18NCodePoint codePoint) {
    const bool valid = codePoint < 0xD800 || (codePoint > 0xDFFF && codePoint <= 0x10FFFF);
    return valid ? codePoint : kReplacementCharacter;
}

struct Utf8Length {
    std::size_t bytes;
    std::size_t codePoints;
};

// The longest prefix that is well-formed and isn't cut inside a character.
Utf8Length wellFormedPrefix(std::string_view bytes) noexcept;

// Appends `bytes` to `out`, with one U+FFFD for each maximal subpart of an ill-formed sequence. Answers the number of
// code points appended. If that would make `out` longer than `maxBytes`, nothing is promised but that `out` stays below
// that length, and the answer is npos. `bytes` must not belong to `out`.
std::size_t appendRepaired(std::string& out, std::string_view bytes, std::size_t maxBytes);

// Writes the UTF-8 form of a scalar value to `out`, which has room for four bytes; answers its length.
std::size_t writeUtf8(I18NCodePoint scalar, char* out) noexcept;

// The operations below want well-formed bytes.

// How many code points begin in the bytes; the first and the last may be cut.
std::size_t countCodePoints(std::string_view wellFormed) noexcept;

// The place `count` code points behind `at`, or `end` if there are fewer.
const char* stepForward(const char* at, const char* end, std::size_t count) noexcept;

// The place `count` code points in front of `at`, or `begin` if there are fewer.
const char* stepBack(const char* begin, const char* at, std::size_t count) noexcept;

} // namespace brindle_platform
