// What is said of a text that is no JSON.
#pragma once

#include <cstddef>

#include "Files.h"

namespace brindle_tool {

// Throws a Failure with the place, the parser's own words and the line. `readBytes` is how far the parser came, `what`
// its message, which opens with the error's name and mostly with the place in bytes.
[[noreturn]] void ThrowJsonFailure(const Input& input, std::size_t readBytes, const char* what);

// The same where the parser doesn't tell how far it came.
[[noreturn]] void ThrowJsonFailure(const Input& input, const char* what);

} // namespace brindle_tool
