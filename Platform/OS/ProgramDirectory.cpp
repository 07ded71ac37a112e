// Directories that are or were the program directory stand in a list that only grows, each once; an atomic pointer
// names the one in force. So readers take no lock, and what they were given stays valid.
#include "OS/ProgramDirectory.h"

#include <atomic>
#include <filesystem>
#include <mutex>
#include <system_error>

#include "OS/Environment.h"
#include "PlatformHooks.h"

namespace brindle_platform {

namespace {

struct Directory {
    std::string path;
    const Directory* older;
};

std::mutex changeMutex;
const Directory* newestDirectory = nullptr; // guarded by changeMutex
std::atomic<const Directory*> directoryInForce{nullptr};

// The parts are put behind `base`, which is "/" or a path in the resolved form.
std::string resolveBehind(std::string base, std::string_view parts) {
    if (base == "/") base.clear();
    while (!parts.empty()) {
        const std::size_t slash = parts.find('/');
        const std::string_view part = parts.substr(0, slash);
        parts.remove_prefix(slash == std::string_view::npos ? parts.size() : slash + 1);
        if (part.empty() || part == ".") continue;
        if (part == "..") {
            base.resize(base.empty() ? 0 : base.rfind('/'));
        } else {
            base.append("/").append(part);
        }
    }
    return base.empty() ? "/" : base;
}

// A relative directory counts from the working directory as it is now, so that a later change of that moves nothing.
std::string absoluteDirectory(std::string_view path) {
    std::error_code failed;
    std::string base = path.starts_with('/') ? "/" : std::filesystem::current_path(failed).string();
    return resolveBehind(resolveBehind("/", base), path);
}

// A system that doesn't tell the executable's place leaves the root.
std::string defaultDirectory() {
    const std::string* home = environmentValue("BRINDLE_HOME");
    if (home != nullptr && !home->empty()) return absoluteDirectory(*home + "/bin");
    std::error_code failed;
    return absoluteDirectory("/" + std::filesystem::read_symlink("/proc/self/exe", failed).parent_path().string());
}

// Needs changeMutex.
const Directory* putInForce(std::string path) {
    const Directory* directory = newestDirectory;
    while (directory != nullptr && directory->path != path)
        directory = directory->older;
    if (directory == nullptr) {
        directory = new Directory{std::move(path), newestDirectory};
        newestDirectory = directory;
    }
    directoryInForce.store(directory, std::memory_order_release);
    return directory;
}

} // namespace

const std::string& programDirectory() {
    const Directory* directory = directoryInForce.load(std::memory_order_acquire);
    if (directory == nullptr) {
        const std::lock_guard<std::mutex> lock(changeMutex);
        directory = directoryInForce.load(std::memory_order_relaxed);
        if (directory == nullptr) directory = putInForce(defaultDirectory());
    }
    return directory->path;
}

std::string completePath(std::string_view path) {
    return path.starts_with('/') ? std::string(path) : resolveBehind(programDirectory(), path);
}

void setProgramDirectory(const I18NString& path) {
    std::string directory = path.empty() ? defaultDirectory() : absoluteDirectory(path.bytes());
    const std::lock_guard<std::mutex> lock(changeMutex);
    putInForce(std::move(directory));
}

} // namespace brindle_platform
