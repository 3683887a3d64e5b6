// The view along Z that picking and window selection share.
#pragma once

#include "shape/Bezier.h"

#include "gepnt2d.h"

namespace qx::shape {

inline AcGePoint2d inPlane(const AcGePoint3d& p) { return {p.x, p.y}; }
inline AcGeVector2d inPlane(const AcGeVector3d& v) { return {v.x, v.y}; }

/// Positive when b lies to the left of a.
inline double cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }

/// True when no coordinate of the primitive is infinite or not a number.
inline bool isFinite(const AcGePoint3d& p) { return std::isfinite(p.x + p.y + p.z); }
inline bool isFinite(const Segment& s) { return isFinite(s.start) && isFinite(s.end); }
inline bool isFinite(const EllipticArc& a) {
    return isFinite(a.centre) && isFinite(a.start()) && isFinite(a.centre + a.v) && isFinite(a.end());
}
inline bool isFinite(const Bezier& curve) {
    for (const WeightedPoint& each : curve.controls())
        if (!isFinite(each.point)) return false;
    return true;
}
inline bool isFinite(const TextRun& run) {
    for (const AcGePoint3d& corner : run.inkCorners())
        if (!isFinite(corner)) return false;
    return true;
}

} // namespace qx::shape
