// Texts as they stand in the query of a URL.
#pragma once

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

// The UTF-8 bytes of the text: a blank becomes "+"; ASCII letters and digits, "-", "." and "_" stay; every other byte
// becomes "%" and two hexadecimal digits in lower case.
BRINDLE_API I18NString AQE_UrlEncode(const I18NString& text);

// The inverse: "+" becomes a blank, "%" and two hexadecimal digits of either case that byte. A "%" without them, and
// all else, is copied. Bytes that aren't UTF-8 become U+FFFD.
BRINDLE_API I18NString AQE_UrlDecode(const I18NString& text);
