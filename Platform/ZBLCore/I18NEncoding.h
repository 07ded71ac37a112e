// Text in other encodings than UTF-8: the names that I18NString takes for an encoding, and the default one.
//
// Names are compared without regard to case, "-" and "_". "utf-16" and "utf-32" are little-endian, "utf-16le",
// "utf-16be" and so on say their order themselves; no byte-order mark is written or stripped. These, "utf-8",
// "iso-8859-1", "us-ascii" and "windows-1252" are converted here; any other name is looked up in the list of ICU.

#pragma once

#include <string>
#include <string_view>

#include "PlatformApi.h"
#include "ZBLCore/I18NString.h"

// The encoding of narrow text files: "utf-8", unless the environment variable BRINDLE_DEFAULT_ENCODING or a test hook
// names another one. It is never of the utf-16 or utf-32 family, by which readers tell wide files. The text lives for
// ever. Any thread.
BRINDLE_PLATFORM_API const char* I18NGetPlatformDefaultEncoding();

namespace brindle_platform {

// The bytes as text. A piece that means nothing in the encoding, such as a lone surrogate or a rest that isn't a whole
// unit, becomes one U+FFFD. An unknown or null name throws ZBLException (severity error, code -1, the name as its
// message).
BRINDLE_PLATFORM_API I18NString decodeText(std::string_view bytes, const char* encoding);

// The text as bytes. A character that the encoding lacks becomes "?". An unknown or null name throws as above.
BRINDLE_PLATFORM_API std::string encodeText(const I18NString& text, const char* encoding);

} // namespace brindle_platform
