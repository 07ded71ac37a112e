// Blocks have one size. Each thread keeps those that it gives back in a linked list, up to a bound; anything else goes
// to the general allocator.
#include "QMValueMemory.h"

#include <new>

#if defined(__has_feature)
#define BRINDLE_HAS_FEATURE(feature) __has_feature(feature)
#else
#define BRINDLE_HAS_FEATURE(feature) 0
#endif

namespace {

// The sanitizers watch what the general allocator does, so under them nothing is kept.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || BRINDLE_HAS_FEATURE(address_sanitizer) ||         \
    BRINDLE_HAS_FEATURE(thread_sanitizer)
constexpr std::size_t kKeptBlocks = 0;
#else
constexpr std::size_t kKeptBlocks = 256;
#endif

// Every value has this size or less, and so have the lists that are argument frames.
constexpr std::size_t kSmall = 64;

// Blocks of that size that a thread has given back, linked through their first word.
struct Block {
    Block* next;
};
struct FreeBlocks {
    Block* first;
    std::size_t count;
    std::size_t most; // 0 before the thread's first release, and again at its end
};

// It needs neither a constructor nor a destructor, and the loader puts it into the block that every thread has from its
// start, so an access needs no call.
__attribute__((tls_model("initial-exec"))) constinit thread_local FreeBlocks freeBlocks{};

void* Take() {
    Block* const block = freeBlocks.first;
    freeBlocks.first = block->next;
    --freeBlocks.count;
    return block;
}

// Made by a thread's first release. What is released after its end goes to the general allocator at once.
struct EndOfThread {
    EndOfThread() noexcept { freeBlocks.most = kKeptBlocks; }
    ~EndOfThread() {
        hasEnded = true;
        freeBlocks.most = 0;
        while (freeBlocks.first)
            ::operator delete(Take());
    }
    static constinit thread_local bool hasEnded;
};
constinit thread_local bool EndOfThread::hasEnded = false;

void ReleaseBeyondMost(void* memory) noexcept {
    if (freeBlocks.most == 0 && !EndOfThread::hasEnded) static thread_local EndOfThread endOfThread;
    ::operator delete(memory);
}

} // namespace

void* QMAllocateSmall(std::size_t size) {
    if (size > kSmall) return ::operator new(size);
    return freeBlocks.first ? Take() : ::operator new(kSmall);
}

void QMReleaseSmall(void* memory, std::size_t size) noexcept {
    if (size > kSmall) {
        ::operator delete(memory);
    } else if (freeBlocks.count >= freeBlocks.most) {
        ReleaseBeyondMost(memory);
    } else {
        freeBlocks.first = ::new (memory) Block{freeBlocks.first};
        ++freeBlocks.count;
    }
}
