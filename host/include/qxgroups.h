// Lists of values in an object's data: for groups that repeat, or whose meaning depends on the groups before
// them. Each value knows what it is, so that whoever moves, keeps or writes the object needs nothing else.
#pragma once

#include "gepnt3d.h"

#include <cstdint>
#include <vector>

namespace qx::db {

enum class Role : std::uint8_t;

struct GroupValue {
    AcGePoint3d value; ///< a single number is its x, of a point in a plane z is 0
    Role role;
    std::int16_t code; ///< of the group that begins it; 0: the file has none, it was computed from the others
};

/// In the order of the file, what was computed behind the rest.
struct GroupList {
    std::vector<GroupValue> values;
};

} // namespace qx::db
