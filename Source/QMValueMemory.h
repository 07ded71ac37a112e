// Memory for the small objects of an expansion: values, and the entries of their lists. They are made and dropped by
// the dozen in every block, so each thread keeps a few of the blocks that it gave back.
#pragma once

#include <cstddef>

// Memory of that size, as from operator new; QMReleaseSmall gives it back, on any thread, with the same size.
void* QMAllocateSmall(std::size_t size);
void QMReleaseSmall(void* memory, std::size_t size) noexcept;
