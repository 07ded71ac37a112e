#include "Mortise/AUT_RefPtr.h"

void* AUT_RefPtrGetMemory(std::size_t size) { return ::operator new(size); }

void AUT_RefPtrReleaseMemory(void* memory) noexcept { ::operator delete(memory); }
