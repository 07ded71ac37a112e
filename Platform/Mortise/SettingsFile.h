// The settings file as a text: from its bytes to the options that it sets.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "ZBLCore/I18NString.h"

namespace brindle_platform {

struct Option {
    I18NString text;                    // an integer in decimal
    std::optional<std::int64_t> number; // if the text is one
};

Option textOption(const I18NString& text);

// Section and name.
using OptionKey = std::pair<std::string, std::string>;
using OptionKeyView = std::pair<std::string_view, std::string_view>;

struct OptionLess {
    using is_transparent = void;
    bool operator()(const OptionKeyView& a, const OptionKeyView& b) const noexcept { return a < b; }
};

using Options = std::map<OptionKey, Option, OptionLess>;

// The texts and integers of the top-level tables. There are none if the text isn't TOML, or has too many dots outside
// of texts; `fault` then receives what is to be read behind the file's name: ":line:column: ..." or ": ...".
Options readSettings(std::string_view bytes, std::string& fault);

} // namespace brindle_platform
