#include "Mortise/SettingsFile.h"

#include <algorithm>
#include <charconv>

#include "Mortise/TomlParser.h"

namespace brindle_platform {
namespace {

constexpr std::size_t kMaxDots = 1000;

std::optional<std::int64_t> parseNumber(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return std::nullopt;
    }
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return number;
}

// The offset behind the TOML string that begins at `begin`; an unterminated one ends with its line or with the text.
std::size_t endOfString(std::string_view text, std::size_t begin) {
    const char quote = text[begin];
    const std::string_view longQuote = quote == '"' ? "\"\"\"" : "'''";
    const bool isLong = text.substr(begin).starts_with(longQuote);
    std::size_t at = begin + (isLong ? 3 : 1);
    for (; at < text.size(); ++at) {
        if (isLong && text.substr(at).starts_with(longQuote)) return at + 3;
        if (!isLong && (text[at] == quote || text[at] == '\n')) return at + 1;
        if (quote == '"' && text[at] == '\\') ++at;
    }
    return text.size();
}

// Whether dotted keys or headers could nest tables so deep that the TOML library, which destroys them by recursion and
// searches lists of them, would exhaust the stack or take quadratic time. Every level takes a dot outside strings.
bool hasTooManyDots(std::string_view text) {
    std::size_t dots = 0;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        if (c == '"' || c == '\'') {
            at = endOfString(text, at);
        } else if (c == '#') {
            at = std::min(text.find('\n', at), text.size());
        } else {
            if (c == '.' && ++dots > kMaxDots) return true;
            ++at;
        }
    }
    return false;
}

Options optionsOf(const toml::table& root) {
    Options options;
    for (const auto& [section, sectionNode] : root) {
        const toml::table* table = sectionNode.as_table();
        if (table == nullptr) continue;
        for (const auto& [name, value] : *table) {
            Option option;
            if (const auto* text = value.as_string()) {
                option = textOption(I18NString(std::string_view(text->get())));
            } else if (const auto* number = value.as_integer()) {
                option = textOption(I18NString(std::to_string(number->get())));
            } else {
                continue;
            }
            options.emplace(OptionKey(section.str(), name.str()), std::move(option));
        }
    }
    return options;
}

} // namespace

Option textOption(const I18NString& text) { return Option{text, parseNumber(text.bytes())}; }

Options readSettings(std::string_view bytes, std::string& fault) {
    if (hasTooManyDots(bytes)) {
        fault = ": more than " + std::to_string(kMaxDots) + " dots outside of texts";
        return {};
    }
    try {
        return optionsOf(toml::parse(bytes));
    } catch (const toml::parse_error& error) {
        const toml::source_position& at = error.source().begin;
        fault = ":" + std::to_string(at.line) + ":" + std::to_string(at.column) + ": ";
        fault += error.description();
        return {};
    }
}

} // namespace brindle_platform
