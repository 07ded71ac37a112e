// The heap of a program in which operator new and delete are counted: linking CountedHeap.cpp replaces them for the
// program and every shared library in it. One thread at a time reads the figures.
#pragma once

#include <cstddef>

namespace brindle_benchmark {

// Bytes that are allocated now, and the most there were since the last ResetPeak.
std::size_t GetLiveBytes();
std::size_t GetPeakBytes();
void ResetPeak();

} // namespace brindle_benchmark
