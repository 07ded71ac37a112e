// The level that a log entry is set to.
#pragma once

#include <string_view>

namespace brindle_platform {

// The test hook's level, else the entry's option in the section "Log" of the user's settings, else "Default" there,
// else
// 3. Any thread; no lock once the settings have been read.
int logLevelOf(std::string_view entry);

} // namespace brindle_platform
