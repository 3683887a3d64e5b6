// Segments, rays and lines in one form, and where two of them meet in space.
#pragma once

#include "gepnt3d.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qx::shape {

inline double largestCoordinate(const AcGePoint3d& p) {
    return std::max({std::abs(p.x), std::abs(p.y), std::abs(p.z)});
}

/// The points origin + along * s for lowest <= s <= highest, which may be infinite; a point when there is no
/// direction.
struct Straight {
    AcGePoint3d origin;
    AcGeVector3d along; ///< of unit length, or zero
    double lowest = 0, highest = 0;

    bool isPoint() const { return along.lengthSqrd() == 0; }
    double extent() const { return highest - lowest; }
    AcGePoint3d at(double s) const { return origin + along * s; }
    double positionOf(const AcGePoint3d& p) const { return along.dotProduct(p - origin); }
    double nearestTo(const AcGePoint3d& p) const { return std::clamp(positionOf(p), lowest, highest); }
    double distanceTo(const AcGePoint3d& p) const { return at(nearestTo(p)).distanceTo(p); }
};

/// A segment; a point when its ends differ by no more than their rounding.
Straight straightBetween(const AcGePoint3d& start, const AcGePoint3d& end);

/// The points in which two straight curves meet: none, one, or the ends of what they have in common.
struct StraightMeetings {
    std::array<AcGePoint3d, 2> points;
    std::size_t count = 0;
};

/// `tolerance` is how near counts as meeting; coordinates are below 1e50.
StraightMeetings meetings(const Straight& a, const Straight& b, double tolerance);

} // namespace qx::shape
