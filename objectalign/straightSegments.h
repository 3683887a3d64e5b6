// The straight segments of a polyline, as candidates for a line.
#pragma once

#include "dbmain.h"
#include "gelnsg3d.h"
#include "gepnt2d.h"

#include <limits>
#include <optional>
#include <vector>

namespace qx::objectalign {

/// Of a lightweight or 2D polyline, in its order, world coordinates; none for any other entity. The entity
/// must be open.
std::vector<AcGeLineSeg3d> straightSegments(AcDbEntity& entity);

/// The segment for which `distance` is smallest, the first of equals; none whose distance is infinite.
template <class Distance>
std::optional<AcGeLineSeg3d> nearestSegment(const std::vector<AcGeLineSeg3d>& segments,
                                            const Distance& distance) {
    std::optional<AcGeLineSeg3d> nearest;
    double shortest = std::numeric_limits<double>::infinity();
    for (const AcGeLineSeg3d& segment : segments) {
        const double each = distance(segment);
        if (!(each < shortest)) continue;
        nearest = segment;
        shortest = each;
    }
    return nearest;
}

/// The segment whose carrying line, seen along Z, passes nearest to the pick, however far away the segment
/// itself is. None without length counts.
std::optional<AcGeLineSeg3d> nearestByCarrier(const std::vector<AcGeLineSeg3d>& segments,
                                              const AcGePoint2d& pick);

} // namespace qx::objectalign
