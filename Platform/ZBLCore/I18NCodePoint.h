// The code point type of I18NString, and what kind of character a code point is.

#pragma once

#include "PlatformApi.h"

// A Unicode code point. Values that are none (surrogates, above U+10FFFF) may be passed, and belong to no class.
using I18NCodePoint = char32_t;

// General category L*, in any script.
BRINDLE_PLATFORM_API bool I18NCodePointIsLetter(I18NCodePoint codePoint) noexcept;

// General category L* or Nd: letters and decimal digits in any script, but no other numbers.
BRINDLE_PLATFORM_API bool I18NCodePointIsAlphanumeric(I18NCodePoint codePoint) noexcept;

// The property White_Space: U+0009 to U+000D, the blank, U+0085, the no-break space, and the spaces and separators
// of U+1680, U+2000 to U+200A, U+2028, U+2029, U+202F, U+205F, U+3000.
BRINDLE_PLATFORM_API bool I18NCodePointIsWhitespace(I18NCodePoint codePoint) noexcept;
