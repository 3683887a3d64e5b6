// Memory by the megabyte, for what is filled from front to back: the system is asked for large pages, which
// cost a fraction of the page faults.
#pragma once

#include "qxexport.h"

#include <cstddef>

namespace qx::os {

/// At least `bytes` of uninitialised memory; throws std::bad_alloc. Given back by freePages().
QX_HOST_API void* allocatePages(std::size_t bytes);
QX_HOST_API void freePages(void* memory);

} // namespace qx::os
