// The view along Z that picking and window selection share.
#pragma once

#include "shape/Bezier.h"

#include "gepnt2d.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace qx::shape {

inline AcGePoint2d inPlane(const AcGePoint3d& p) { return {p.x, p.y}; }
inline AcGeVector2d inPlane(const AcGeVector3d& v) { return {v.x, v.y}; }

/// Positive when b lies to the left of a.
inline double cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }

/// True when no coordinate of the primitive is infinite or not a number.
inline bool isFinite(const AcGePoint3d& p) { return std::isfinite(p.x + p.y + p.z); }
inline bool isFinite(const Segment& s) { return isFinite(s.start) && isFinite(s.end); }
inline bool isFinite(const Endless& line) { return isFinite(line.base) && isFinite(line.base + line.along); }
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

/// The part of a finite endless line that lies within the window, seen along Z; nothing when it passes by.
inline std::optional<Segment> partWithin(const Box& window, const Endless& line) {
    const double length = inPlane(line.along).length();
    const AcGeVector3d along = length > 0 ? line.along / length : AcGeVector3d{};
    double from = line.goesBothWays ? -std::numeric_limits<double>::infinity() : 0;
    double to = length > 0 ? std::numeric_limits<double>::infinity() : 0;
    if (length == 0) from = 0;
    for (const unsigned axis : {0u, 1u}) {
        const double toMin = window.min[axis] - line.base[axis], toMax = window.max[axis] - line.base[axis];
        if (along[axis] == 0) {
            if (toMin > 0 || toMax < 0) return std::nullopt;
            continue;
        }
        from = std::max(from, std::min(toMin / along[axis], toMax / along[axis]));
        to = std::min(to, std::max(toMin / along[axis], toMax / along[axis]));
    }
    const double rounding = 1e-14 * (std::abs(line.base.x) + std::abs(line.base.y) + std::abs(to));
    if (!(from <= to + rounding)) return std::nullopt;
    return Segment{line.base + along * from, line.base + along * std::max(from, to)};
}

} // namespace qx::shape
