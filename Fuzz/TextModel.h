// Text as a vector of code points, with every operation written in the plainest way: the model that I18NString is
// measured by. Nothing here uses the library.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace brindle_fuzz {

using CodePoints = std::u32string;

struct WideForm {
    const char* encoding;
    std::size_t unitBytes;
    bool isBigEndian;
};

inline constexpr WideForm kWideForms[] = {
    {"utf-16", 2, false}, {"utf-16be", 2, true}, {"utf-16le", 2, false}, {"utf-32", 4, false}, {"utf-32be", 4, true}};

// Each maximal subpart of an ill-formed sequence is one U+FFFD.
CodePoints DecodeUtf8(std::string_view bytes);
std::string EncodeUtf8(const CodePoints& text);
bool IsWellFormed(std::string_view bytes);

// Units of two or four bytes. A lone surrogate, a value that is no code point and a rest that is no unit are U+FFFD.
CodePoints DecodeWide(std::string_view bytes, std::size_t unitBytes, bool isBigEndian);
std::string EncodeWide(const CodePoints& text, std::size_t unitBytes, bool isBigEndian);

// Positions below 0 are 0, beyond the end the end. -1 as an end or a count is the rest, a lesser count none.
CodePoints Substring(const CodePoints& text, std::ptrdiff_t begin, std::ptrdiff_t end);
CodePoints Substr(const CodePoints& text, std::ptrdiff_t position, std::ptrdiff_t count);
CodePoints Replace(const CodePoints& text, std::ptrdiff_t position, std::ptrdiff_t count, const CodePoints& by);

// -1 if there is none; the empty text occurs nowhere.
std::ptrdiff_t Find(const CodePoints& text, const CodePoints& part, std::ptrdiff_t from);
std::ptrdiff_t FindLast(const CodePoints& text, const CodePoints& part);

} // namespace brindle_fuzz
