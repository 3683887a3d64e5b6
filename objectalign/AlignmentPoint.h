// A point of a curve at which things are aligned, as the person picked it.
#pragma once

#include "dbid.h"
#include "gepnt3d.h"

namespace qx::objectalign {

struct AlignmentPoint {
    enum class Curve { straight = 1, circular = 2 };

    Curve curve = Curve::straight;
    AcDbObjectId curveId = {}; ///< the line, circle or arc, or what stands for the segment of a polyline
    AcGePoint3d point = {};    ///< z 0
    double angle = 0; ///< of the line from start to end, or of the tangent, outside to its left; radians
    AcGePoint3d centre = {}; ///< of a circular curve
    double radius = 0;       ///< of a circular curve
};

} // namespace qx::objectalign
