// Environment variables, each read once in a process. Private to the platform library.
#pragma once

#include <string>

namespace brindle_platform {

// The variable's value at the time when the name was first asked for; null if it had none, or if the process runs with
// more rights than its user. Valid to the end of the process. Any thread.
const std::string* environmentValue(const char* name);

} // namespace brindle_platform
