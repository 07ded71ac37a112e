// The library's constant strings by number, texts of resource files by number, and the format for doubles. Everything
// here may be called on any thread.
#pragma once

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

class BRINDLE_API QERes {
public:
    // The constant string with this number, 0 to 523; any other number answers the empty string. The same number
    // answers the same object each time, and the reference holds until the process ends.
    static const I18NString& getString(long index);
};

// The text with this number of a resource file; a number without a text gives a fallback that names file and number.
// outFile receives the path of the file that was asked, empty if there is none.
BRINDLE_API I18NString AQE_ResourceGetString(int id, I18NString& outFile, const I18NString& resourceFile);
BRINDLE_API I18NString AQE_ResourceGetString(int id, const I18NString& resourceFile);

// Writes the printf format for a double with 15 significant digits, zero-terminated, into the buffer, which must hold
// 6 bytes, and answers the buffer.
BRINDLE_API char* AQE_UtilityGetDoubleFormatString(char* buffer);
