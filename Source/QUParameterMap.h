// What the parameter maps and the coordinator share inside the library.
#pragma once

#include "ZBLCore/I18NString.h"

// What the integer operations of maps and coordinators answer.
namespace parameter_result {

inline constexpr int kFound = 1;
inline constexpr int kUnsupported = 0;
inline constexpr int kNoSuchKey = -1;
inline constexpr int kMapNotServed = -2;
inline constexpr int kNoConfigurationFile = -4;

} // namespace parameter_result

// "_env", the map name of every operation that takes a key alone. One object for the life of the process, so that a
// lookup makes no string for it.
const I18NString& AQU_EnvironmentMapName();

// Whether the user option "MultiValuesAllowed" of "General Options" is other than 0. Each call sees what it is by then,
// so that a program can change it between two calls.
bool AQU_MultiValuesAllowed();
