// Small routines on text that the macro language and the rest of the library share: search and replace, trimming,
// numbered substitution, the test for a macro. Each takes time linear in its texts. They keep no state and may run on
// any thread.
#pragma once

#include <vector>

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

// Replaces every occurrence of `search` in `source`, each beginning where the one before it has ended or behind it; one
// that only a replacement brings about stays. `out` is overwritten and returned; it may be any of the three texts. An
// empty `search` occurs nowhere.
BRINDLE_API I18NString& AQE_SearchAndReplace(const I18NString& source, const I18NString& search,
                                             const I18NString& replace, I18NString& out);
BRINDLE_API I18NString AQE_SearchAndReplace(const I18NString& source, const I18NString& search,
                                            const I18NString& replace);

// Lowers each byte in place by the C locale in force, up to the terminating zero; returns `text`.
BRINDLE_API char* AQE_StrToLower(char* text);

// Removes white space: mode 1 in front, 2 behind, 3 on both sides; any other mode does nothing. The trailing side never
// removes the first character, so that mode 2 leaves one character of a text of nothing but white space.
BRINDLE_API void AQE_Trim(I18NString& text, int mode);

// Whether the text as a whole has the outward form of a macro block: white space aside it begins with one "#" and ends
// with another. What lies between is not looked at, so "#a# and #b#" passes.
BRINDLE_API bool AQE_IsMacro(const I18NString& text);

// Replaces the markers "%1" to "%4" by the strings of `args`, as often as they occur; inserted text is not scanned. A
// marker without a string stays as it is.
BRINDLE_API void AQE_SubstituteText(I18NString& text, const std::vector<I18NString>& args);
BRINDLE_API void AQE_SubstituteText(I18NString& text, const I18NString& a);
BRINDLE_API void AQE_SubstituteText(I18NString& text, const I18NString& a, const I18NString& b);
BRINDLE_API void AQE_SubstituteText(I18NString& text, const I18NString& a, const I18NString& b, const I18NString& c);
BRINDLE_API void AQE_SubstituteText(I18NString& text, const I18NString& a, const I18NString& b, const I18NString& c,
                                    const I18NString& d);
