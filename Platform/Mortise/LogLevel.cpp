#include "Mortise/LogLevel.h"

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>

#include "Mortise/SettingsStore.h"
#include "OS/Published.h"
#include "PlatformHooks.h"

namespace brindle_platform {
namespace {

constexpr int kDefaultLevel = 3;

using Levels = std::map<std::string, int, std::less<>>;

constinit Published<Levels> g_levels;
constinit std::mutex g_levelChange;

} // namespace

int logLevelOf(std::string_view entry) {
    if (const Levels* levels = g_levels.get()) {
        if (const auto found = levels->find(entry); found != levels->end()) return found->second;
    }
    if (const auto level = findNumber<int>("Log", entry)) return *level;
    return findNumber<int>("Log", "Default").value_or(kDefaultLevel);
}

void setLogLevel(const I18NString& name, int level) {
    const std::lock_guard guard(g_levelChange);
    const Levels* const current = g_levels.get();
    Levels next = current == nullptr ? Levels() : *current;
    next.insert_or_assign(std::string(name.bytes()), level);
    g_levels.set(std::move(next));
}

void clearLogLevels() {
    const std::lock_guard guard(g_levelChange);
    g_levels.clear();
}

} // namespace brindle_platform
