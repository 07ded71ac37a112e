// The library's constant strings as they stand in the table, and the numbers of those that the library itself asks for.
#pragma once

#include <cstddef>

inline constexpr std::size_t kQEResourceCount = 524;

inline constexpr long kQEStringMessageFile = 338;    // of the library's messages
inline constexpr long kQEStringLogEntry = 434;       // the log entry that is used where none is named
inline constexpr long kQEStringErrorComponent = 435; // the component of the library's failures

extern const char* const kQEResourceTable[kQEResourceCount];
