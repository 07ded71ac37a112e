// A block's size is what the allocator really set aside for it, which it can be asked for again when the block is
// freed.
#include "CountedHeap.h"

#include <atomic>
#include <cstdlib>
#include <new>

#include <malloc.h>

namespace brindle_benchmark {
namespace {

std::atomic<std::size_t> liveBytes;
std::atomic<std::size_t> peakBytes;

void* Count(void* block) {
    if (!block) throw std::bad_alloc();
    const std::size_t size = malloc_usable_size(block);
    const std::size_t live = liveBytes.fetch_add(size) + size;
    for (std::size_t peak = peakBytes; live > peak && !peakBytes.compare_exchange_weak(peak, live);) {
    }
    return block;
}

void Free(void* block) {
    liveBytes -= malloc_usable_size(block);
    std::free(block);
}

} // namespace

std::size_t GetLiveBytes() { return liveBytes; }
std::size_t GetPeakBytes() { return peakBytes; }
void ResetPeak() { peakBytes = liveBytes.load(); }

} // namespace brindle_benchmark

// The array and nothrow forms of the standard library end in these.
void* operator new(std::size_t size) { return brindle_benchmark::Count(std::malloc(size ? size : 1)); }
void* operator new(std::size_t size, std::align_val_t alignment) {
    const auto boundary = static_cast<std::size_t>(alignment);
    return brindle_benchmark::Count(std::aligned_alloc(boundary, (size + boundary - 1) / boundary * boundary));
}
void operator delete(void* block) noexcept { brindle_benchmark::Free(block); }
void operator delete(void* block, std::size_t) noexcept { brindle_benchmark::Free(block); }
void operator delete(void* block, std::align_val_t) noexcept { brindle_benchmark::Free(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { brindle_benchmark::Free(block); }
