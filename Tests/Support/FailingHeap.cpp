#include "Support/FailingHeap.h"

#include <cstdlib>
#include <new>

std::atomic<long> brindle_test::allocationsLeft = -1;

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    using brindle_test::allocationsLeft;
    return allocationsLeft >= 0 && allocationsLeft-- == 0 ? nullptr : std::malloc(size ? size : 1);
}
void* operator new(std::size_t size) {
    if (void* const block = operator new(size, std::nothrow)) return block;
    throw std::bad_alloc();
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
