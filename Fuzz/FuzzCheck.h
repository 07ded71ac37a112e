// How a fuzz target states its laws: one that doesn't hold is named on standard error, and the process aborts, which
// the fuzzer takes for a finding.
#pragma once

#include <string_view>

namespace brindle_fuzz {

[[noreturn]] void BreakLaw(std::string_view law, std::string_view seen = {}, std::string_view expected = {});

inline void Require(bool holds, std::string_view law) {
    if (!holds) BreakLaw(law);
}

inline void RequireSame(std::string_view seen, std::string_view expected, std::string_view law) {
    if (seen != expected) BreakLaw(law, seen, expected);
}

} // namespace brindle_fuzz
