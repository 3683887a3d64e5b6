// Between space and the XY plane, in which all alignments are worked out.
#pragma once

#include "gepnt2d.h"
#include "gepnt3d.h"

#include <cmath>

namespace qx::kernel {

inline AcGePoint2d inPlane(const AcGePoint3d& p) { return {p.x, p.y}; }
inline AcGeVector2d inPlane(const AcGeVector3d& v) { return {v.x, v.y}; }
/// With z 0.
inline AcGePoint3d inSpace(const AcGePoint2d& p) { return {p.x, p.y, 0}; }
inline AcGeVector3d inSpace(const AcGeVector2d& v) { return {v.x, v.y, 0}; }
/// What lies above or below, brought down to z 0.
inline AcGePoint3d onGround(const AcGePoint3d& p) { return {p.x, p.y, 0}; }

/// The unit vector in that direction, radians.
inline AcGeVector2d unitAt(double angle) { return {std::cos(angle), std::sin(angle)}; }

} // namespace qx::kernel
