// Small services on texts: case, numbers, literals, place holders. All are free of shared state and safe on any thread.
#pragma once

#include <cstdint>

#include "PlatformApi.h"
#include "ZBLCore/I18NLocale.h"
#include "ZBLCore/I18NString.h"

// One empty text for the life of the process.
BRINDLE_PLATFORM_API const I18NString& AUT_GetEmptyString();

// "en-us", whatever the machine is set to: tables whose keys are lower-cased in this locale don't depend on the user.
BRINDLE_PLATFORM_API const I18NLocale& AUT_DefaultLocale();

// Unicode's full case mapping by the rules of the locale's language, so the length may change.
BRINDLE_PLATFORM_API I18NString AUT_ToLower(const I18NString& text, const I18NLocale& locale);
BRINDLE_PLATFORM_API I18NString AUT_ToUpper(const I18NString& text, const I18NLocale& locale);

// Below 0, 0 or above 0, as strcmp answers, by simple case folding of code point after code point in no locale.
BRINDLE_PLATFORM_API int AUT_CaseInsensitiveCompare(const I18NString& left, const I18NString& right);

// Digits above 9 are lower-case letters. A radix outside 2 to 36 acts as 10.
BRINDLE_PLATFORM_API I18NString AUT_ToString(std::int64_t value, int radix = 10);

// Reads ASCII white space, one sign and decimal digits up to the first other character. Without a digit the answer is
// 0, out of range it is the nearest int.
BRINDLE_PLATFORM_API int AUT_ToInt(const I18NString& text);

// Each byte becomes the code point of its value. Null gives the empty text.
BRINDLE_PLATFORM_API I18NString AUT_I18NLatin1Literal(const char* bytes);

// Puts the parameters in place of "%1" to "%16", in one pass from the left that doesn't read what it puts in. Two
// digits are taken if they form 10 to 16. Anything else behind a "%" stays as it is.
BRINDLE_PLATFORM_API void AUT_SimpleSubstituteText(I18NString& text, const I18NString& p1, const I18NString& p2,
                                                   const I18NString& p3, const I18NString& p4, const I18NString& p5,
                                                   const I18NString& p6, const I18NString& p7, const I18NString& p8,
                                                   const I18NString& p9, const I18NString& p10, const I18NString& p11,
                                                   const I18NString& p12, const I18NString& p13, const I18NString& p14,
                                                   const I18NString& p15, const I18NString& p16);
