// Whether a point was picked on a curve, and which segment of a polyline lies under it. A pick within 3
// drawing units of the curve, seen along Z, counts as on it. The first segment that is near enough wins, not
// the nearest. Every curve is opened and closed here.
#pragma once

#include "dbid.h"
#include "gepnt2d.h"
#include "gepnt3d.h"

namespace qx::objectalign {

/// For lines, circles, arcs, lightweight and 2D polylines; false for any other object and for one that can't
/// be opened. A point counts as on an arc when the ray from the centre through it meets the arc near it.
bool isPointOnCurve(AcDbObjectId curveId, const AcGePoint2d& point);

/// What stands for a segment of a polyline: a new line or a whole circle at z 0 in model space. A null id
/// when no segment lies under the point or the object is of another class.
struct SegmentStandIn {
    AcDbObjectId id;
    bool isStraight = true;
};
SegmentStandIn polylineSegmentAt(AcDbObjectId polylineId, const AcGePoint2d& point);
/// The same for 2D polylines; 3D polylines are not accepted.
SegmentStandIn polyline2dSegmentAt(AcDbObjectId polylineId, const AcGePoint2d& point);

/// The direction of a line at a point, and the point moved to its foot on the endless line. `first` and
/// `second` are the ends in order: from left to right, from top to bottom when the line stands upright.
/// `angle` is that from start to end, radians, 0 to 2 pi. Any other object is refused at the command line,
/// and nothing changes. The status of the opening.
Acad::ErrorStatus lineDirectionAt(AcDbObjectId lineId, AcGePoint2d& point, AcGePoint3d& first,
                                  AcGePoint3d& second, double& angle);

} // namespace qx::objectalign
