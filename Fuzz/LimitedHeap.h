// A bound on what one operation may allocate: linking LimitedHeap.cpp replaces operator new and delete of the program
// and of every shared library in it. A short text of the macro language can ask for more memory than any machine has,
// since each function call may double a text; the bound makes that a std::bad_alloc soon, and exercises it.
#pragma once

#include <cstddef>

namespace brindle_fuzz {

// While one exists, operator new on this thread throws std::bad_alloc beyond the given sum of living blocks. Not
// nested.
class HeapLimit {
public:
    explicit HeapLimit(std::size_t byteCount);
    HeapLimit(const HeapLimit&) = delete;
    HeapLimit& operator=(const HeapLimit&) = delete;
    ~HeapLimit();
};

} // namespace brindle_fuzz
