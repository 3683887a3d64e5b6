#include "os/memory.h"

#include <cstdlib>
#include <new>
#include <sys/mman.h>

namespace qx::os {

namespace {
constexpr std::size_t largePage = std::size_t{2} << 20;
}

// Small blocks stay small: a large page that is hardly used would cost more than it saves.
void* allocatePages(std::size_t bytes) {
    if (bytes < largePage) {
        void* memory = std::malloc(bytes);
        return memory ? memory : throw std::bad_alloc{};
    }
    const std::size_t whole = (bytes + largePage - 1) / largePage * largePage;
    void* memory = std::aligned_alloc(largePage, whole);
    if (!memory) throw std::bad_alloc{};
    madvise(memory, whole, MADV_HUGEPAGE); // a wish; without it everything works just as well
    return memory;
}

void freePages(void* memory) { std::free(memory); }

} // namespace qx::os
