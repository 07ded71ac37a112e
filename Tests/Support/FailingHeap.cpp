#include "Support/FailingHeap.h"

#include <cstdlib>
#include <new>

std::atomic<long> brindle_test::allocationsLeft = -1;
std::atomic<long> brindle_test::blocksInUse = 0;

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    using brindle_test::allocationsLeft;
    if (allocationsLeft >= 0 && allocationsLeft-- == 0) return nullptr;
    ++brindle_test::blocksInUse;
    return std::malloc(size ? size : 1);
}
void* operator new(std::size_t size) {
    if (void* const block = operator new(size, std::nothrow)) return block;
    throw std::bad_alloc();
}
void operator delete(void* block) noexcept {
    if (block) --brindle_test::blocksInUse;
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept { operator delete(block); }
