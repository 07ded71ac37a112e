// Puts parameters into texts. Place holders are "%1" to "%16": behind the "%" two digits are taken if they form 10 to
// 16, else one from 1 to 9. Anything else stays as it is, a place holder without a parameter too; there is no escape.
// One pass from the left: what has been put in is not read again, so a parameter may hold place holders of its own.
#pragma once

#include <cstdint>
#include <span>

#include "ZBLCore/I18NString.h"

// The first parameter stands for "%1". In `used`, if it is given, bit n tells whether the parameter at index n was put
// in; the bits from 16 on are 0. None of the pointers may be null. A result of 2 GiB or more raises std::length_error.
I18NString ZBLSubstituteText(const I18NString& text, std::span<const I18NString* const> parameters,
                             std::uint32_t* used = nullptr);

// As above; then each parameter p that has no place in the text is appended as " [p]", empty ones only if `keepEmpty`.
I18NString ZBLSubstituteAndAppend(const I18NString& text, std::span<const I18NString* const> parameters,
                                  bool keepEmpty);
