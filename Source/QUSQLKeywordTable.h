// The two word lists behind AQU_SQLKeyword. Their order has no meaning.
#pragma once

#include <cstddef>

inline constexpr std::size_t kSqlReservedWordCount = 299;
inline constexpr std::size_t kQueryLanguageWordCount = 210;

// Reserved words of SQL, in upper case.
extern const char* const kSqlReservedWords[kSqlReservedWordCount];
// Words of the query language, in lower case; some are reserved words too.
extern const char* const kQueryLanguageWords[kQueryLanguageWordCount];
