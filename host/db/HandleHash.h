// Where a handle stands in a hash table. A file chooses its handles, and could choose them so that all stand
// in one place: so places come from numbers that differ in each run. What is found does not depend on them.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qx::db {

struct HandleHash {
    std::size_t operator()(std::uint64_t handle) const noexcept;
};

} // namespace qx::db
