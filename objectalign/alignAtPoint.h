// One object at a time, set at a point of a line or circle along its direction there.
#pragma once

#include "dbid.h"
#include "gepnt3d.h"

namespace qx::objectalign {

/// Turns the object so that its alignment edge gets the target angle (radians) and moves it so that the
/// middle of the edge comes to `firstPoint`: the centre of a circle, the insertion point of a block, the apex
/// of an arc. With `adjustSpacing` it then goes to the left of the base line by `spacing` drawing units (for
/// a circle or ellipse: and the radius across). What then touches the line is turned by a half turn about the
/// middle of its edge, so that it lies on the other side; with `adjustSpacing` only when `spacing` is not 0.
///
/// The base line's own direction counts, from its start to its end; that from first to second point when it
/// has none. z stays. Answers eOk, the status of what was refused, or notHandled.
int alignObjectToGivenLine(AcDbObjectId objectId, double targetAngle, double spacing, bool adjustSpacing,
                           const AcGePoint3d& firstPoint, const AcGePoint3d& secondAlignPoint,
                           AcDbObjectId baseLineId);

/// The same at a point of a circle, along its tangent. The spacing goes outward; turned by a half turn is
/// what then reaches inside the circle.
int alignObjectToGivenCircle(AcDbObjectId objectId, double targetAngle, double spacing, bool adjustSpacing,
                             const AcGePoint3d& alignPoint, const AcGePoint3d& centre, double radius);

} // namespace qx::objectalign
