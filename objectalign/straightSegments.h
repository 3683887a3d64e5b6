// The straight segments of a polyline, as candidates for a line.
#pragma once

#include "dbmain.h"
#include "gelnsg3d.h"

#include <optional>
#include <vector>

namespace qx::objectalign {

/// Of a lightweight or 2D polyline, in its order, world coordinates; none for any other entity. The entity
/// must be open.
std::vector<AcGeLineSeg3d> straightSegments(AcDbEntity& entity);

/// The segment for which `distance` is smallest, the first of equals.
template <class Distance>
std::optional<AcGeLineSeg3d> nearestSegment(const std::vector<AcGeLineSeg3d>& segments,
                                            const Distance& distance) {
    std::optional<AcGeLineSeg3d> nearest;
    double shortest = 0;
    for (const AcGeLineSeg3d& segment : segments) {
        const double each = distance(segment);
        if (nearest && !(each < shortest)) continue;
        nearest = segment;
        shortest = each;
    }
    return nearest;
}

} // namespace qx::objectalign
