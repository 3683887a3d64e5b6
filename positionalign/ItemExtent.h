// What is aligned or distributed, measured along one axis. An item is an object or a group; an object is
// measured as a group of one.
#pragma once

#include "dbidar.h"
#include "dbmain.h"

#include <span>

namespace qx::positionalign {

enum class Axis : unsigned { x = 0, y = 1 };

/// A point of a box, or the coordinate of an item that goes with it.
enum class Corner { min, centre, max };

/// World coordinates along one axis.
struct ItemExtent {
    double min, max;
    double
        centre; ///< midway between the smallest and the largest centre of a member, not between min and max
    double at(Corner corner) const {
        return corner == Corner::min ? min : corner == Corner::max ? max : centre;
    }
};

/// Reads the boxes of the members, of which there is at least one. A member that draws nothing or can't be
/// opened counts with the values of an empty AcDbExtents.
ItemExtent measured(std::span<const AcDbObjectId> members, Axis axis);

/// The corner of a box in space; the centre has z 0.
AcGePoint3d cornerOf(const AcDbExtents& box, Corner corner);

/// A displacement along the axis.
AcGeVector3d along(Axis axis, double distance, double z = 0);

inline double coordinate(const AcGePoint3d& point, Axis axis) { return point[static_cast<unsigned>(axis)]; }

} // namespace qx::positionalign
