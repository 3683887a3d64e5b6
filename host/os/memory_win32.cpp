#include "os/memory.h"

#include <cstdlib>
#include <new>

namespace qx::os {

// Large blocks come untouched from the system here anyway; large pages need a right that users don't have.
void* allocatePages(std::size_t bytes) {
    void* memory = std::malloc(bytes);
    return memory ? memory : throw std::bad_alloc{};
}

void freePages(void* memory) { std::free(memory); }

} // namespace qx::os
