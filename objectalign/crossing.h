// What is put at a point of a curve, and whether it then lies on the wrong side of it as well.
#pragma once

#include "dbmain.h"
#include "gepnt2d.h"

#include <functional>

namespace qx::objectalign {

/// Whether an object lies across. The status of the opening that failed; `isAcross` stays then.
using FindAcross = std::function<Acad::ErrorStatus(AcDbObjectId id, bool& isAcross)>;

/// Across is what meets the curve, as both are drawn.
FindAcross meeting(AcDbObjectId curveId);

/// Across is what has something inside the circle about `centre`, seen along Z. What only touches it is
/// outside: within a millionth of the radius, and within the precision of large coordinates. Parts that hang
/// together with nothing else may be missed.
FindAcross reachingInside(const AcGePoint3d& centre, double radius);

/// Moves the object by the way between the points; when it then lies across it is turned by a half turn about
/// `to`. Nothing is turned without `findAcross`. The status of what was refused, eOk otherwise.
Acad::ErrorStatus moveClearOf(const FindAcross& findAcross, AcDbObjectId id, const AcGePoint2d& from,
                              const AcGePoint2d& to);

} // namespace qx::objectalign
