#include "Mortise/AUT_Library.h"

#include <atomic>

#include "PlatformHooks.h"

namespace {

constinit std::atomic<long> g_users{0};
constinit std::atomic<long> g_nextResult{0};

} // namespace

long AUT_Initialize(const char*) {
    const long result = g_nextResult.exchange(0);
    if (result == 0) ++g_users;
    return result;
}

void AUT_Terminate(const char*) { --g_users; }

void brindle_platform::setNextInitializeResult(long result) { g_nextResult = result; }
