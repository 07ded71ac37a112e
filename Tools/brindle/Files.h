// Reading and writing of whole texts. Every failure is a Failure that names the file and the system's reason.
#pragma once

#include <string>
#include <string_view>

#include "ZBLCore/I18NString.h"

namespace brindle_tool {

struct Input {
    std::string name; // as it is shown
    I18NString text;
};

// The file, or standard input for "-", which can be read once only. Ill-formed UTF-8 becomes U+FFFD; 2 GiB and more are
// refused.
Input ReadInput(const std::string& file);

// Writes to standard output to the last byte and adds none.
void WriteOutput(std::string_view bytes);

// Replaces the content of the file, which is discarded if it could not be written whole.
void WriteFile(const std::string& file, std::string_view bytes);

// Failure if the two names are of one file, where writing the one would cost what is read from the other.
void RequireAnotherFile(const std::string& target, const std::string& source);

// Removes the file if it is a regular one; a link that leads to it stays. Never fails.
void DiscardFile(const std::string& file);

// For files that the library opens, which doesn't tell why it can't: Failure unless the file is a regular one, with a
// name in UTF-8, and can be opened in the mode of std::fopen.
void RequireRegularFile(const std::string& file, const char* mode);

} // namespace brindle_tool
