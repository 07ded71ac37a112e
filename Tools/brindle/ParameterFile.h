// Parameter files: JSON of the form
//
//     {"region": "North", "categories": ["tea", "coffee"], "label": {"net": "Net amount"}}
//
// A text or a list of texts belongs to the map "_env", an object is the map of its name.
#pragma once

#include <compare>
#include <map>
#include <string>
#include <vector>

#include "ZBLCore/I18NString.h"

#include "Files.h"

namespace brindle_tool {

inline constexpr const char* kEnvironmentMap = "_env";

struct ParameterName {
    I18NString map;
    I18NString key;
    auto operator<=>(const ParameterName&) const = default;
};

// As messages show it: 'key', or 'map{key}' outside "_env".
std::string ToText(const ParameterName& name);

// The values of each name in the order given.
using ParameterTable = std::map<ParameterName, std::vector<I18NString>>;

// The text is refused whole, with a Failure, if it isn't JSON, has a value of another type than the above, or gives a
// name twice.
ParameterTable ParseParameters(const Input& input);

// The same for a file, or standard input for "-".
ParameterTable ReadParameterFile(const std::string& file);

} // namespace brindle_tool
