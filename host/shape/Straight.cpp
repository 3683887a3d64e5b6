#include "shape/Straight.h"

namespace qx::shape {

Straight straightBetween(const AcGePoint3d& start, const AcGePoint3d& end) {
    const AcGeVector3d way = end - start;
    const double length = way.length();
    const double rounding = 1e-15 * std::max(largestCoordinate(start), largestCoordinate(end));
    if (!(length > rounding)) return {start, {}, 0, 0};
    return {start, way / length, 0, length};
}

namespace {

StraightMeetings overlap(const Straight& a, const Straight& b, double tolerance) {
    const Straight& axis = a.extent() >= b.extent() ? a : b;
    const Straight& other = &axis == &a ? b : a;
    const double direction = axis.along.dotProduct(other.along) < 0 ? -1 : 1;
    const double origin = axis.positionOf(other.origin);
    const double p = origin + direction * other.lowest, q = origin + direction * other.highest;
    double from = std::max(axis.lowest, std::min(p, q)), to = std::min(axis.highest, std::max(p, q));
    StraightMeetings found;
    if (from > to + tolerance) return found;
    if (to - from <= tolerance) from = to = from + (to - from) / 2;
    for (const double s : {from, to}) {
        if (!std::isfinite(s) || other.distanceTo(axis.at(s)) > tolerance) continue;
        found.points[found.count++] = axis.at(s);
    }
    return found;
}

StraightMeetings crossing(const Straight& a, const Straight& b, double tolerance) {
    const AcGeVector3d normal = a.along.crossProduct(b.along), way = b.origin - a.origin;
    const double meeting = way.crossProduct(b.along).dotProduct(normal) / normal.lengthSqrd();
    const double first = std::clamp(meeting, a.lowest, a.highest);
    const AcGePoint3d there = b.at(b.nearestTo(a.at(first))), here = a.at(a.nearestTo(there));
    const double limit = std::max(tolerance, 1e-13 * largestCoordinate(here));
    if (!(here.distanceTo(there) <= limit)) return {};
    return {{here}, 1};
}

StraightMeetings meeting(const AcGePoint3d& point, const Straight& other, double tolerance) {
    if (!(other.distanceTo(point) <= tolerance)) return {};
    return {{point}, 1};
}

} // namespace

// Nearly parallel curves are taken for parallel where they could not be told apart over their whole length.
StraightMeetings meetings(const Straight& a, const Straight& b, double tolerance) {
    if (a.isPoint()) return meeting(a.origin, b, tolerance);
    if (b.isPoint()) return meeting(b.origin, a, tolerance);
    const double sine = a.along.crossProduct(b.along).length();
    const bool isParallel = sine <= 1e-12 || sine * std::min(a.extent(), b.extent()) <= tolerance;
    return isParallel ? overlap(a, b, tolerance) : crossing(a, b, tolerance);
}

} // namespace qx::shape
