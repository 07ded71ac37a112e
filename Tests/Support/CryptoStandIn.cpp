// Stands in for the security library: each entry point adds its place in the list, in hundreds, to its argument.
#include "AQU_CryptoRuntime.h"

namespace {
constexpr int kBefore = __COUNTER__;
}

#define ENTRY(name)                                                                                                    \
    extern "C" __attribute__((visibility("default"))) int name(int argument) {                                         \
        return (__COUNTER__ - kBefore) * 100 + argument;                                                               \
    }
BRINDLE_CRYPTO_ENTRY_POINTS(ENTRY)
