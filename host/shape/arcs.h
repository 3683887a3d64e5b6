// Makers of elliptic arcs from the ways in which drawings describe them. Angles are radians. A positive sweep
// runs from x axis to y axis, a negative one the other way; a full turn or more closes the curve.
#pragma once

#include "ge/angles.h"
#include "shape/Primitives.h"

namespace qx::shape {

using qx::ge::sweepBetween;

/// Part of the ellipse centre + major cos t + minor sin t from parameter `start` on; start and end fall
/// together when `sweep` is zero.
QX_HOST_API EllipticArc ellipticArc(const AcGePoint3d& centre, const AcGeVector3d& major,
                                    const AcGeVector3d& minor, double start, double sweep);

/// Part of a circle in the plane of two perpendicular unit vectors.
QX_HOST_API EllipticArc circleArc(const AcGePoint3d& centre, const AcGeVector3d& xAxis,
                                  const AcGeVector3d& yAxis, double radius, double startAngle, double sweep);

QX_HOST_API EllipticArc fullCircle(const AcGePoint3d& centre, const AcGeVector3d& xAxis,
                                   const AcGeVector3d& yAxis, double radius);

/// True when a polyline's segment with this bulge is better drawn straight: below that, the centre is so far
/// away that rounding outweighs the curvature.
inline bool isStraight(double bulge) { return !(std::abs(bulge) >= 1e-8); }

/// The arc of a polyline's segment: bulge is the tangent of a quarter of its angle, positive
/// counter-clockwise about `normal`, a unit vector perpendicular to the chord. Ask isStraight first. Equal
/// ends give a point.
QX_HOST_API EllipticArc arcFromBulge(const AcGePoint3d& start, const AcGePoint3d& end, double bulge,
                                     const AcGeVector3d& normal);

} // namespace qx::shape
