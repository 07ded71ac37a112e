// A value of the macro language on one line: 'text', [elements], null, and its type's number for any other kind.
#pragma once

#include <string>

#include "AQM_MacroValue.h"

namespace brindle_test {

inline std::string DescribeValue(const AQM_MacroValue* value) {
    if (!value) return "null";
    if (const auto* const text = dynamic_cast<const AQM_MacroValueString*>(value))
        return "'" + std::string(text->GetValue().bytes()) + "'";
    const auto* const array = dynamic_cast<const AQM_MacroValueArray*>(value);
    if (!array) return std::to_string(value->GetValueType());
    std::string line = "[";
    for (const AQM_MacroValue* const element : array->GetValues())
        line += (line.size() > 1 ? ", " : "") + DescribeValue(element);
    return line + "]";
}

} // namespace brindle_test
