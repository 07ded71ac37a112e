#include "Mortise/SettingsStore.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "Mortise/AUT_I_LogFile.h"
#include "OS/Environment.h"
#include "OS/FileSystem.h"
#include "PlatformHooks.h"

namespace brindle_platform {
namespace {

constexpr std::size_t kMaxFileBytes = std::size_t{1} << 20;

// What the tables are built from. The lock guards all of it.
struct Store {
    std::mutex lock;
    I18NString chosenPath;
    std::optional<Options> file; // none until it has been read
    Options overrides;
    std::vector<std::unique_ptr<const Options>> tables;
};

constinit std::atomic<const Options*> g_options{nullptr};
constinit std::atomic<std::uint32_t> g_changes{1};

Store& store() {
    static Store& instance = *new Store();
    return instance;
}

// With the lock held. The table goes first, so that nobody finds the old one who has seen the new count.
void withdrawOptions() {
    g_options.store(nullptr, std::memory_order_release);
    g_changes.fetch_add(1, std::memory_order_release);
}

// `fault` receives a readable text if the file isn't TOML.
Options readFile(const std::string& path, std::string& fault) {
    const std::optional<std::string> bytes = readWholeFile(path, kMaxFileBytes);
    if (!bytes) return {};
    Options options = readSettings(*bytes, fault);
    if (!fault.empty()) fault.insert(0, path);
    return options;
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
    const auto found = options->find(OptionKeyView(section, name));
    return found == options->end() ? nullptr : &found->second;
}

std::uint32_t countOptionChanges() { return g_changes.load(std::memory_order_acquire); }

void setUserConfigurationFile(const I18NString& path) {
    Store& s = store();
    const std::lock_guard guard(s.lock);
    s.chosenPath = path;
    s.file.reset();
    withdrawOptions();
}

void reloadUserConfiguration() {
    Store& s = store();
    const std::lock_guard guard(s.lock);
    s.file.reset();
    withdrawOptions();
}

void overrideOption(const I18NString& section, const I18NString& name, const I18NString& value) {
    Store& s = store();
    const std::lock_guard guard(s.lock);
    s.overrides.insert_or_assign(OptionKey(section.bytes(), name.bytes()), textOption(value));
    withdrawOptions();
}

void clearOverrides() {
    Store& s = store();
    const std::lock_guard guard(s.lock);
    s.overrides.clear();
    withdrawOptions();
}

} // namespace brindle_platform
