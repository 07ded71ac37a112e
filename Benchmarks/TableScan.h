// The floor of the plain figures: what a scan that looks at every byte once, by table, and copies the text costs.
#pragma once

#include <string>
#include <string_view>

namespace brindle_benchmark {

// The text with each block `#$NAME#` of plain ASCII, whatever its name, replaced by `value`; strings, names, prompts
// and comments are passed over. The text is well-formed, or std::runtime_error is thrown.
std::string ExpandByTable(std::string_view text, std::string_view value);

} // namespace brindle_benchmark
