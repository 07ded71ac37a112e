#include "OS/Environment.h"

#include <cstdlib>
#include <map>
#include <mutex>
#include <optional>

namespace brindle_platform {

const std::string* environmentValue(const char* name) {
    struct Table {
        std::mutex mutex;
        std::map<std::string, std::optional<std::string>, std::less<>> values;
    };
    static Table* const table = new Table; // never destroyed, so that it serves at exit too

    const std::lock_guard<std::mutex> lock(table->mutex);
    auto found = table->values.find(name);
    if (found == table->values.end()) {
        const char* value = ::secure_getenv(name);
        found = table->values.emplace(name, value != nullptr ? std::optional<std::string>(value) : std::nullopt).first;
    }
    return found->second ? &*found->second : nullptr;
}

} // namespace brindle_platform
