#include "PlatformOs.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <ctime>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <dlfcn.h>
#include <strings.h>
#include <unistd.h>

#include "OS/Published.h"
#include "PlatformHooks.h"

namespace {

using brindle_platform::Published;

constexpr long long kTicksPerSecond = 1'000'000'000;

constinit std::atomic<bool> g_counterPresent{true};
constinit Published<std::function<std::int64_t()>> g_counter;
constinit Published<int> g_bias;

LONG standardBias() {
    ::tzset();
    const std::time_t now = std::time(nullptr);
    struct tm local {};
    ::localtime_r(&now, &local);
    long smallest = std::numeric_limits<long>::max();
    for (int month = 0; month < 12; ++month) {
        struct tm start {};
        start.tm_year = local.tm_year;
        start.tm_mon = month;
        start.tm_mday = 1;
        const std::time_t at = ::timegm(&start);
        struct tm there {};
        ::localtime_r(&at, &there);
        smallest = std::min(smallest, there.tm_gmtoff);
    }
    return static_cast<LONG>(-smallest / 60);
}

// The file itself, or what stands in for it; empty if there is neither.
std::string findModule(const std::string& path) {
    if (::access(path.c_str(), F_OK) == 0) return path;
    constexpr std::string_view extension = ".dll";
    if (path.size() < extension.size()) return {};
    const std::string stem = path.substr(0, path.size() - extension.size());
    if (::strcasecmp(path.c_str() + stem.size(), extension.data()) != 0) return {};
    const std::size_t name = stem.rfind('/') + 1;
    for (const char* const prefix : {"", "lib"}) {
        std::string candidate = std::string(stem).insert(name, prefix) + ".so";
        if (::access(candidate.c_str(), F_OK) == 0) return candidate;
    }
    return {};
}

} // namespace

BOOL QueryPerformanceCounter(LARGE_INTEGER* ticks) {
    if (const auto* counter = g_counter.get()) {
        ticks->QuadPart = (*counter)();
        return 1;
    }
    struct timespec now {};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    ticks->QuadPart = now.tv_sec * kTicksPerSecond + now.tv_nsec;
    return 1;
}

BOOL QueryPerformanceFrequency(LARGE_INTEGER* ticksPerSecond) {
    const bool present = g_counterPresent.load(std::memory_order_relaxed);
    ticksPerSecond->QuadPart = present ? kTicksPerSecond : 0;
    return present;
}

DWORD GetTimeZoneInformation(TIME_ZONE_INFORMATION* zone) {
    const int* const bias = g_bias.get();
    *zone = TIME_ZONE_INFORMATION{bias != nullptr ? *bias : standardBias(), 0, 0};
    return 0;
}

HMODULE LoadLibraryExA(const char* path, void*, DWORD) {
    // A bare name would be searched for in places that others may write to.
    if (path == nullptr || std::string_view(path).find('/') == std::string_view::npos) return nullptr;
    const std::string file = findModule(path);
    return file.empty() ? nullptr : ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
}

FARPROC GetProcAddress(HMODULE module, const char* name) {
    // A null handle means the whole program to the call below.
    return module == nullptr ? nullptr : reinterpret_cast<FARPROC>(::dlsym(module, name));
}

BOOL FreeLibrary(HMODULE module) { return module != nullptr && ::dlclose(module) == 0; }

BOOL DisableThreadLibraryCalls(HMODULE) { return 1; }

int _access(const char* path, int mode) { return path == nullptr ? -1 : ::access(path, mode); }

namespace brindle_platform {

void setPerformanceCounterPresent(bool present) { g_counterPresent = present; }

void setPerformanceCounter(std::function<std::int64_t()> ticks) { g_counter.setOrClear(std::move(ticks)); }

void setTimeZoneBias(std::optional<int> minutes) { g_bias.setOrClear(minutes); }

} // namespace brindle_platform
