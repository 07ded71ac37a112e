#include "LimitedHeap.h"

#include <cstdlib>
#include <limits>
#include <new>

#include <malloc.h>

namespace brindle_fuzz {
namespace {

constexpr auto kNoLimit = std::numeric_limits<std::ptrdiff_t>::max();

// Bytes allocated since the limit was set, less those freed; blocks from before it may be among the freed.
thread_local std::ptrdiff_t liveBytes = 0;
thread_local std::ptrdiff_t limitBytes = kNoLimit;

void RequireRoom(std::size_t size) {
    if (limitBytes == kNoLimit) return;
    if (size > static_cast<std::size_t>(limitBytes) || liveBytes + static_cast<std::ptrdiff_t>(size) > limitBytes)
        throw std::bad_alloc();
}

void* Count(void* block) {
    if (!block) throw std::bad_alloc();
    liveBytes += static_cast<std::ptrdiff_t>(malloc_usable_size(block));
    return block;
}

void* Allocate(std::size_t size) {
    RequireRoom(size);
    return Count(std::malloc(size ? size : 1));
}

void* Allocate(std::size_t size, std::align_val_t alignment) {
    RequireRoom(size);
    const auto boundary = static_cast<std::size_t>(alignment);
    return Count(std::aligned_alloc(boundary, (size + boundary - 1) / boundary * boundary));
}

template <class... Alignment>
void* AllocateOrNull(std::size_t size, Alignment... alignment) noexcept {
    try {
        return Allocate(size, alignment...);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void Free(void* block) {
    liveBytes -= static_cast<std::ptrdiff_t>(malloc_usable_size(block));
    std::free(block);
}

} // namespace

HeapLimit::HeapLimit(std::size_t byteCount) {
    liveBytes = 0;
    limitBytes = static_cast<std::ptrdiff_t>(byteCount);
}

HeapLimit::~HeapLimit() { limitBytes = kNoLimit; }

} // namespace brindle_fuzz

// All forms, since the sanitizer has its own of each and wants both ends of a block's life in one hand.
using namespace brindle_fuzz;
using Size = std::size_t;
using Align = std::align_val_t;
using NoThrow = std::nothrow_t;

void* operator new(Size size) { return Allocate(size); }
void* operator new[](Size size) { return Allocate(size); }
void* operator new(Size size, const NoThrow&) noexcept { return AllocateOrNull(size); }
void* operator new[](Size size, const NoThrow&) noexcept { return AllocateOrNull(size); }
void* operator new(Size size, Align alignment) { return Allocate(size, alignment); }
void* operator new[](Size size, Align alignment) { return Allocate(size, alignment); }
void* operator new(Size size, Align alignment, const NoThrow&) noexcept { return AllocateOrNull(size, alignment); }
void* operator new[](Size size, Align alignment, const NoThrow&) noexcept { return AllocateOrNull(size, alignment); }

void operator delete(void* block) noexcept { Free(block); }
void operator delete[](void* block) noexcept { Free(block); }
void operator delete(void* block, Size) noexcept { Free(block); }
void operator delete[](void* block, Size) noexcept { Free(block); }
void operator delete(void* block, const NoThrow&) noexcept { Free(block); }
void operator delete[](void* block, const NoThrow&) noexcept { Free(block); }
void operator delete(void* block, Align) noexcept { Free(block); }
void operator delete[](void* block, Align) noexcept { Free(block); }
void operator delete(void* block, Size, Align) noexcept { Free(block); }
void operator delete[](void* block, Size, Align) noexcept { Free(block); }
void operator delete(void* block, Align, const NoThrow&) noexcept { Free(block); }
void operator delete[](void* block, Align, const NoThrow&) noexcept { Free(block); }
