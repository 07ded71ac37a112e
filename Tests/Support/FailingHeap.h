// A heap that can be made to run out: linking FailingHeap.cpp replaces operator new for the whole test program.
#pragma once

#include <atomic>

namespace brindle_test {

// How many allocations still succeed, on all threads together, before one fails; below 0, as at first, all succeed.
extern std::atomic<long> allocationsLeft;

extern std::atomic<long> blocksInUse;

} // namespace brindle_test
