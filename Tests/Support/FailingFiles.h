// A file system that can be made to fail: linking FailingFiles.cpp puts counting functions in front of the system's
// open, read, write and close and of their like for streams, for the whole test program and the libraries it uses.
#pragma once

#include <atomic>

namespace brindle_test {

// How many of these calls still succeed, on all threads together, before one fails; below 0, as at first, all succeed.
// What a failed read or write would have moved stays where it is; a failed close closes.
extern std::atomic<long> fileCallsLeft;

} // namespace brindle_test
