#include "Mortise/SettingsStore.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "Mortise/AUT_I_LogFile.h"
#include "OS/Environment.h"
#include "OS/FileSystem.h"
#include "PlatformHooks.h"

// Values nested in values mean nothing here, and the parser takes machine stack for each level.
#define TOML_MAX_NESTED_VALUES 16
#include <toml++/toml.h>

namespace brindle_platform {
namespace {

constexpr std::size_t kMaxFileBytes = std::size_t{1} << 20;
constexpr std::size_t kMaxDots = 1000;

using Key = std::pair<std::string, std::string>;
using KeyView = std::pair<std::string_view, std::string_view>;

struct KeyLess {
    using is_transparent = void;
    bool operator()(const KeyView& a, const KeyView& b) const noexcept { return a < b; }
};

using Options = std::map<Key, Option, KeyLess>;

// What the tables are built from. The lock guards all of it.
struct Store {
    std::mutex lock;
    I18NString chosenPath;
    std::optional<Options> file; // none until it has been read
    Options overrides;
    std::vector<std::unique_ptr<const Options>> tables;
};

constinit std::atomic<const Options*> g_options{nullptr};

Store& store() {
    static Store& instance = *new Store();
    return instance;
}

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

Option textOption(const I18NString& text) { return Option{text, parseNumber(text.bytes())}; }

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
            options.emplace(Key(section.str(), name.str()), std::move(option));
        }
    }
    return options;
}

// `fault` receives a readable text if the file isn't TOML.
Options readFile(const std::string& path, std::string& fault) {
    const std::optional<std::string> bytes = readWholeFile(path, kMaxFileBytes);
    if (!bytes) return {};
    if (hasTooManyDots(*bytes)) {
        fault = path + ": more than " + std::to_string(kMaxDots) + " dots outside of texts";
        return {};
    }
    try {
        return optionsOf(toml::parse(std::string_view(*bytes)));
    } catch (const toml::parse_error& error) {
        const toml::source_position& at = error.source().begin;
        fault = path + ":" + std::to_string(at.line) + ":" + std::to_string(at.column) + ": ";
        fault += error.description();
        return {};
    }
}

std::string settingsPath(const I18NString& chosenPath) {
    if (!chosenPath.empty()) return std::string(chosenPath.bytes());
    if (const std::string* path = environmentValue("BRINDLE_SETTINGS"); path != nullptr && !path->empty()) {
        return *path;
    }
    // A relative directory would let the working directory decide.
    if (const std::string* home = environmentValue("XDG_CONFIG_HOME"); home != nullptr && home->starts_with('/')) {
        return *home + "/brindle/settings.toml";
    }
    if (const std::string* home = environmentValue("HOME"); home != nullptr && home->starts_with('/')) {
        return *home + "/.config/brindle/settings.toml";
    }
    return {};
}

const Options& loadOptions() {
    Store& s = store();
    std::string fault;
    const Options* options = nullptr;
    {
        const std::lock_guard guard(s.lock);
        options = g_options.load(std::memory_order_acquire);
        if (options != nullptr) return *options;
        if (!s.file) s.file = readFile(settingsPath(s.chosenPath), fault);
        auto table = std::make_unique<Options>(*s.file);
        for (const auto& [key, option] : s.overrides)
            table->insert_or_assign(key, option);
        options = s.tables.emplace_back(std::move(table)).get();
        g_options.store(options, std::memory_order_release);
    }
    // The log asks these options for its level, so the record waits until they stand.
    if (!fault.empty()) {
        AUT_I_LogFile::Create("UserConfiguration")
            ->Log(AUT_I_LogFile::ELL_NotFound, "settings file ignored: %1", I18NString(std::string_view(fault)));
    }
    return *options;
}

} // namespace

const Option* findOption(std::string_view section, std::string_view name) {
    const Options* options = g_options.load(std::memory_order_acquire);
    if (options == nullptr) options = &loadOptions();
    const auto found = options->find(KeyView(section, name));
    return found == options->end() ? nullptr : &found->second;
}

void setUserConfigurationFile(const I18NString& path) {
    Store& s = store();
    const std::lock_guard guard(s.lock);
    s.chosenPath = path;
    s.file.reset();
    g_options.store(nullptr, std::memory_order_release);
}

void reloadUserConfiguration() {
    Store& s = store();
    const std::lock_guard guard(s.lock);
    s.file.reset();
    g_options.store(nullptr, std::memory_order_release);
}

void overrideOption(const I18NString& section, const I18NString& name, const I18NString& value) {
    Store& s = store();
    const std::lock_guard guard(s.lock);
    s.overrides.insert_or_assign(Key(section.bytes(), name.bytes()), textOption(value));
    g_options.store(nullptr, std::memory_order_release);
}

void clearOverrides() {
    Store& s = store();
    const std::lock_guard guard(s.lock);
    s.overrides.clear();
    g_options.store(nullptr, std::memory_order_release);
}

} // namespace brindle_platform
