// The calls whose time benchmark-growth follows while their input doubles.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "ZBLCore/I18NString.h"

namespace brindle_benchmark {

// One expansion: the text, the values of the parameters `list` and `value`, and what has to come out.
struct GrowthCall {
    std::string text;
    std::vector<I18NString> list;
    std::string value;
    std::string expected;
};

struct GrowthRow {
    const char* name;
    // What sizes count: bytes of the text, or elements.
    bool countsElements;
    // The call of a size, in pure ASCII or not.
    GrowthCall (*make)(std::size_t size, bool ascii);
};

const std::vector<GrowthRow>& GetGrowthRows();

} // namespace brindle_benchmark
