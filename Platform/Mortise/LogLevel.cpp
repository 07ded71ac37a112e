#include "Mortise/LogLevel.h"

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "Mortise/SettingsStore.h"
#include "PlatformHooks.h"

namespace brindle_platform {
namespace {

constexpr int kDefaultLevel = 3;

using Levels = std::map<std::string, int, std::less<>>;

// Every table that was ever published: readers hold no lock, so none is freed.
struct LevelTables {
    std::mutex lock;
    std::vector<std::unique_ptr<const Levels>> tables;
};

constinit std::atomic<const Levels*> g_levels{nullptr};

LevelTables& levelTables() {
    static LevelTables& instance = *new LevelTables();
    return instance;
}

} // namespace

int logLevelOf(std::string_view entry) {
    if (const Levels* levels = g_levels.load(std::memory_order_acquire)) {
        if (const auto found = levels->find(entry); found != levels->end()) return found->second;
    }
    if (const auto level = findNumber<int>("Log", entry)) return *level;
    return findNumber<int>("Log", "Default").value_or(kDefaultLevel);
}

void setLogLevel(const I18NString& name, int level) {
    LevelTables& all = levelTables();
    const std::lock_guard guard(all.lock);
    const Levels* current = g_levels.load(std::memory_order_relaxed);
    auto next = current == nullptr ? std::make_unique<Levels>() : std::make_unique<Levels>(*current);
    next->insert_or_assign(std::string(name.bytes()), level);
    g_levels.store(all.tables.emplace_back(std::move(next)).get(), std::memory_order_release);
}

void clearLogLevels() {
    const std::lock_guard guard(levelTables().lock);
    g_levels.store(nullptr, std::memory_order_release);
}

} // namespace brindle_platform
