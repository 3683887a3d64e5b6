// Whether something that was put at a point of a curve lies on the wrong side of it as well.
#pragma once

#include "dbmain.h"

namespace qx::objectalign {

/// Whether the two meet as they are drawn. The status of the opening that failed; `isAcross` stays then.
Acad::ErrorStatus findMeeting(AcDbObjectId id, AcDbObjectId curveId, bool& isAcross);

/// Whether something of the object lies inside the circle about `centre`. What only touches it is outside,
/// within a millionth of the radius. The status of the opening; `isAcross` stays when it failed.
Acad::ErrorStatus findInside(AcDbObjectId id, const AcGePoint3d& centre, double radius, bool& isAcross);

} // namespace qx::objectalign
