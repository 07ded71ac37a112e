// A value that any thread may replace while others read it without a lock. Replaced values are kept for good, so that
// what a reader holds stays valid; meant for what tests and tools set a few times in a process. Private to the platform
// library.
#pragma once

#include <atomic>
#include <type_traits>
#include <utility>

namespace brindle_platform {

// To be a constinit object of static storage: it is never destroyed.
template <class Value>
class Published {
public:
    constexpr Published() noexcept = default;
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    // Null if none is in force.
    const Value* get() const noexcept { return m_inForce.load(std::memory_order_acquire); }

    void set(Value value) {
        auto* const node = new Node{std::move(value), m_newest.load(std::memory_order_relaxed)};
        while (!m_newest.compare_exchange_weak(node->older, node, std::memory_order_relaxed)) {
        }
        m_inForce.store(&node->value, std::memory_order_release);
    }

    void clear() noexcept { m_inForce.store(nullptr, std::memory_order_release); }

    // Sets the value, a function or what a std::optional holds; an empty one clears.
    template <class Maybe>
    void setOrClear(Maybe maybe) {
        if (!maybe) {
            clear();
        } else if constexpr (std::is_same_v<Maybe, Value>) {
            set(std::move(maybe));
        } else {
            set(*std::move(maybe));
        }
    }

private:
    struct Node {
        const Value value;
        Node* older;
    };

    std::atomic<const Value*> m_inForce{nullptr};
    std::atomic<Node*> m_newest{nullptr};
};

} // namespace brindle_platform
