// The program directory: what relative paths of configuration and logs are completed against. It is the one set by
// setProgramDirectory (PlatformHooks.h), else bin/ below the directory that the environment variable BRINDLE_HOME
// names, else the directory of the running executable. Private to the platform library.
#pragma once

#include <string>
#include <string_view>

namespace brindle_platform {

// Absolute, with "/" as separator and none at the end (but for the root itself), without "." and "..". The string lives
// to the end of the process; a later call may answer another one. Any thread; no lock once it has been asked for.
const std::string& programDirectory();

// An absolute path as it is; any other completed against the program directory and in the form described above. "." and
// ".." are resolved in the text alone, so links aren't followed. The empty path acts as ".".
std::string completePath(std::string_view path);

} // namespace brindle_platform
