// Where something comes down on a base line.
#pragma once

#include "dbmain.h"
#include "gepnt2d.h"

namespace qx::objectalign {

/// Where the perpendicular of the target direction through the point meets the base line, which is open, lies
/// at z 0 and is taken as endless; the origin when it does not.
AcGePoint3d footPoint(const AcGePoint2d& point, double targetAngle, const AcDbEntity& baseLine);

} // namespace qx::objectalign
