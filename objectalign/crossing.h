// Whether something that was put at a point of a curve lies on the wrong side of it as well.
#pragma once

#include "dbmain.h"

namespace qx::objectalign {

/// True when the two meet as they are drawn. False when one can't be opened.
bool meets(AcDbObjectId id, AcDbObjectId curveId);

/// True when something of the object lies inside the circle about `centre`. What only touches it is outside,
/// within a millionth of the radius. False when the object can't be opened.
bool reachesInside(AcDbObjectId id, const AcGePoint3d& centre, double radius);

} // namespace qx::objectalign
