// The narrow form of the library's constant strings.
#pragma once

#include <cstddef>

inline constexpr std::size_t kQEResourceCount = 524;

extern const char* const kQEResourceTable[kQEResourceCount];
