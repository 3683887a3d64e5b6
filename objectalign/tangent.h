// The tangent of a circle or arc at a picked point.
#pragma once

#include "dbid.h"
#include "gepnt2d.h"
#include "gepnt3d.h"

namespace qx::objectalign {

struct Tangent {
    AcDbObjectId curve = {}; ///< the circle or arc; null when there is no tangent, and then nothing was drawn
    AcGePoint2d point = {};  ///< the pick, brought onto the curve along its radius
    double angle = 0;        ///< of the tangent, radians, 0 to 2 pi
    AcDbObjectId line = {};  ///< the tangent, drawn from the point as long as the radius
    AcGePoint3d centre = {};
    double radius = 0;
    AcGePoint3d lineStart = {}, lineEnd = {}; ///< z 0
};

/// The tangent runs from the point towards where the centre comes when it is turned about the point by a
/// quarter turn counter-clockwise, whichever way an arc runs; outside the curve is on its left. Any other
/// object is refused at the command line. A pick at the centre has no tangent.
Tangent tangentAt(AcDbObjectId curveId, const AcGePoint2d& picked);

} // namespace qx::objectalign
