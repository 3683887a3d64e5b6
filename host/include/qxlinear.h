// What straight curves in the plane and in space share. A curve that was made of two equal points, or along a
// zero vector, is its one point: it has no direction, is parallel to nothing and is met by no other.
#pragma once

#include "gegbl.h"

#include <algorithm>
#include <cmath>

namespace qx::ge {

template <class Point, class Vector> class LinearEntity {
public:
    /// A point of the curve: its start, when it has one.
    Point pointOnLine() const { return origin_; }
    /// Of unit length; zero for a degenerate curve.
    Vector direction() const { return direction_; }

    /// Directions compared within the vector tolerance, equal or opposite.
    bool isParallelTo(const LinearEntity& other, const AcGeTol& tol = AcGeContext::gTol) const {
        return direction_.isParallelTo(other.direction_, tol);
    }
    /// The nearest point of the curve as it is: of a segment never one beyond its ends.
    Point closestPointTo(const Point& point) const {
        return at(std::clamp(direction_.dotProduct(point - origin_), lowest(), highest()));
    }
    double distanceTo(const Point& point) const { return closestPointTo(point).distanceTo(point); }
    /// True when the curve is at most the point tolerance away, also just past an end.
    bool isOn(const Point& point, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(point) <= tol.equalPoint();
    }

protected:
    LinearEntity() = default;

    void setLine(const Point& point, const Vector& along) { setSpan(point, along, -unlimited, unlimited); }
    void setSegment(const Point& start, const Vector& way) { setSpan(start, way, 0, way.length()); }

    double length() const { return highest_; }
    Point at(double distance) const { return origin_ + direction_ * distance; }
    /// Whether a point of the whole line, so far from the origin, belongs to the curve.
    bool reaches(double distance, const AcGeTol& tol) const {
        return distance >= lowest() - tol.equalPoint() && distance <= highest() + tol.equalPoint();
    }
    double lowest() const { return lowest_; }
    double highest() const { return highest_; }

private:
    static constexpr double unlimited = 1e300; // finite: zero times infinity is no number

    void setSpan(const Point& origin, const Vector& along, double lowest, double highest) {
        const AcGeTol anyLength = exact();
        const bool isDegenerate = along.isZeroLength(anyLength) || !std::isfinite(along.length());
        origin_ = origin;
        direction_ = isDegenerate ? Vector{} : along.normal(anyLength);
        lowest_ = isDegenerate ? 0 : lowest;
        highest_ = isDegenerate ? 0 : highest;
    }
    // A way between two distinct points has a direction however short it is.
    static AcGeTol exact() {
        AcGeTol tol;
        tol.setEqualVector(0);
        return tol;
    }

    Point origin_;
    Vector direction_;
    double lowest_ = 0, highest_ = 0;
};

} // namespace qx::ge
