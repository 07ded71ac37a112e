#include "FuzzCheck.h"

#include <cstdlib>
#include <iostream>

namespace brindle_fuzz {

void BreakLaw(std::string_view law, std::string_view seen, std::string_view expected) {
    std::cerr << "broken law: " << law << '\n';
    if (seen != expected) std::cerr << "seen:     " << seen << "\nexpected: " << expected << '\n';
    std::cerr.flush();
    std::abort();
}

} // namespace brindle_fuzz
