// Texts by number from the message catalogues.
#pragma once

#include "PlatformApi.h"
#include "ZBLCore/I18NString.h"

// Sets `text` to the English text of the number in the resource file's catalogue and `outFile` to the catalogue's path.
// Without a catalogue `outFile` is empty; without an entry the answer is false and `text` is the file's name and the
// number ("QE 0x35dc43d6"). Any thread.
BRINDLE_PLATFORM_API bool AUT_ResourceLoadString(const I18NString& resourceFile, I18NString& outFile, int id,
                                                 I18NString& text);
