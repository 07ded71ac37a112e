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

// Blocks of one size that nobody uses, linked through their first word.
class FreeBlocks {
public:
    explicit constexpr FreeBlocks(std::size_t size) : m_size(size) {}
    FreeBlocks(const FreeBlocks&) = delete;
    FreeBlocks& operator=(const FreeBlocks&) = delete;
    // What is released on the thread after this goes to the general allocator at once.
    ~FreeBlocks() {
        m_most = 0;
        while (m_first)
            ::operator delete(Take());
    }

    void* Allocate() { return m_first ? Take() : ::operator new(m_size); }
    void Release(void* memory) noexcept {
        if (m_count >= m_most) {
            ::operator delete(memory);
            return;
        }
        m_first = ::new (memory) Block{m_first};
        ++m_count;
    }

private:
    struct Block {
        Block* next;
    };

    void* Take() {
        Block* const block = m_first;
        m_first = block->next;
        --m_count;
        return block;
    }

    Block* m_first = nullptr;
    std::size_t m_count = 0;
    std::size_t m_most = kKeptBlocks;
    const std::size_t m_size;
};

// List entries and values have these sizes; the few others there may be are left to the general allocator.
struct ThreadBlocks {
    FreeBlocks entries{24};
    FreeBlocks values{64};
};

// A few words, so the loader finds room for them in the block that every thread has from its start, and an access needs
// no call.
__attribute__((tls_model("initial-exec"))) thread_local ThreadBlocks threadBlocks;

FreeBlocks* BlocksFor(std::size_t size) {
    if (size <= 24) return &threadBlocks.entries;
    return size <= 64 ? &threadBlocks.values : nullptr;
}

} // namespace

void* QMAllocateSmall(std::size_t size) {
    FreeBlocks* const blocks = BlocksFor(size);
    return blocks ? blocks->Allocate() : ::operator new(size);
}

void QMReleaseSmall(void* memory, std::size_t size) noexcept {
    if (FreeBlocks* const blocks = BlocksFor(size))
        blocks->Release(memory);
    else
        ::operator delete(memory);
}
