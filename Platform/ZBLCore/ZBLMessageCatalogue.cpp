#include "ZBLCore/ZBLMessageCatalogue.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "OS/FileSystem.h"
#include "OS/ProgramDirectory.h"
#include "ZBLCore/ZBLMessageLines.h"
#include "ZBLCore/ZBLThread.h"

namespace {

constexpr std::size_t kMaxFileBytes = std::size_t{16} << 20;

// Every catalogue that is there is kept, and this many names that have none. Names come from callers, so there must be
// a bound; one more is sought anew each time.
constexpr std::size_t kMaxMissing = 256;

struct Catalogue {
    std::string path;
    bool readable = false;
    ZBLMessageLines lines;
    const Catalogue* older = nullptr;
};

constinit ZBLThreadCriticalSection loading;
constinit std::atomic<const Catalogue*> newestCatalogue{nullptr};
std::size_t missingCount = 0; // guarded by loading

bool isPlainName(std::string_view name) {
    const auto isPlain = [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
    };
    return !name.empty() && name.size() <= 64 && std::all_of(name.begin(), name.end(), isPlain);
}

std::unique_ptr<Catalogue> load(std::string path) {
    auto catalogue = std::make_unique<Catalogue>();
    if (std::optional<std::string> content = brindle_platform::readWholeFile(path, kMaxFileBytes)) {
        catalogue->readable = true;
        catalogue->lines = ZBLMessageLines(std::move(*content));
    }
    catalogue->path = std::move(path);
    return catalogue;
}

const Catalogue* findKept(std::string_view path) {
    const Catalogue* catalogue = newestCatalogue.load(std::memory_order_acquire);
    while (catalogue != nullptr && catalogue->path != path)
        catalogue = catalogue->older;
    return catalogue;
}

// Answers whether the catalogue has the number; tells in `path` where it lies unless that holds another path already.
bool lookUp(const Catalogue& catalogue, unsigned long number, I18NString& text, I18NString* path) {
    const bool answered = catalogue.lines.findText(number, text);
    if (path != nullptr && (answered || (catalogue.readable && path->empty()))) {
        *path = I18NString(std::string_view(catalogue.path));
    }
    return answered;
}

bool lookUpIn(std::string path, unsigned long number, I18NString& text, I18NString* foundPath) {
    const Catalogue* kept = findKept(path);
    if (kept == nullptr) {
        ZBLThreadGuard guard(loading);
        kept = findKept(path);
        if (kept == nullptr) {
            std::unique_ptr<Catalogue> fresh = load(std::move(path));
            if (!fresh->readable && missingCount == kMaxMissing) return lookUp(*fresh, number, text, foundPath);
            fresh->older = newestCatalogue.load(std::memory_order_relaxed);
            kept = fresh.release();
            newestCatalogue.store(kept, std::memory_order_release);
            if (!kept->readable) ++missingCount;
        }
    }
    return lookUp(*kept, number, text, foundPath);
}

} // namespace

bool ZBLMessageCatalogue::findText(const I18NString& file, unsigned long number, const I18NLocale& locale,
                                   I18NString& text, I18NString* path) {
    if (path != nullptr) path->clear();
    if (!isPlainName(file.bytes())) return false;
    const std::string_view name = locale.getName().bytes();
    const std::string_view language = name.substr(0, name.find_first_of("-_"));
    const std::array<std::string_view, 3> locales{name, language != name ? language : std::string_view(),
                                                  language != "en" ? std::string_view("en") : std::string_view()};
    for (const std::string_view candidate : locales) {
        if (!isPlainName(candidate)) continue;
        std::string relative = "../configuration/messages/";
        relative.append(file.bytes()).append("_").append(candidate).append(".txt");
        if (lookUpIn(brindle_platform::completePath(relative), number, text, path)) return true;
    }
    return false;
}

I18NString ZBLMessageCatalogue::fallbackText(const I18NString& file, unsigned long number) {
    std::array<char, 2 * sizeof(number)> digits;
    char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number, 16).ptr;
    I18NString text = file;
    text.append(" 0x");
    text.append(I18NString(digits.data(), static_cast<std::size_t>(end - digits.data())));
    return text;
}
