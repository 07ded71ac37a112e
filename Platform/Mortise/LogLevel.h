// The level that a log entry is set to.
#pragma once

#include <string_view>

namespace brindle_platform {

// The level that the test hook gives the entry, or its option in the section "Log" of the user's settings, or "Default"
// there, or 3. Any thread; no lock once the settings have been read.
int logLevelOf(std::string_view entry);

} // namespace brindle_platform
