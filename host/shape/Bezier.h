// Rational Bézier curves: what a spline consists of. Weights are above zero, so that a curve never leaves the
// hull of its control points; those who measure it count on that. Coordinates that are no finite numbers are
// passed over or passed on, never an endless loop.
#pragma once

#include "shape/Primitives.h"

#include <array>
#include <cstddef>
#include <span>

namespace qx::shape {

struct WeightedPoint {
    AcGePoint3d point;
    double weight = 1;
};

/// The curve over the parameters from 0 to 1.
struct Bezier {
    static constexpr int mostDegree = 25;

    int degree = 1;
    std::array<WeightedPoint, mostDegree + 1> points; ///< the first degree + 1 of them count

    std::span<const WeightedPoint> controls() const {
        return {points.data(), static_cast<std::size_t>(degree) + 1};
    }
    std::span<WeightedPoint> controls() { return {points.data(), static_cast<std::size_t>(degree) + 1}; }
    const AcGePoint3d& start() const { return points[0].point; }
    const AcGePoint3d& end() const { return controls().back().point; }
    QX_HOST_API AcGePoint3d at(double t) const;
};

/// How far a chord that stands for a piece of a curve may be from it, in sizes of the whole curve, for those
/// who look at curves by chords.
constexpr double flatness = 1e-7;

/// Part of the way from one weighted point to another.
WeightedPoint between(const WeightedPoint& a, const WeightedPoint& b, double t);

/// A cubic by its ends and, at each, a third of the derivative.
QX_HOST_API Bezier cubic(const AcGePoint3d& start, const AcGeVector3d& startLeg, const AcGePoint3d& end,
                         const AcGeVector3d& endLeg);

QX_HOST_API std::array<Bezier, 2> halves(const Bezier& curve);

/// The box around the control points; wider than the curve's.
QX_HOST_API Box hullBox(const Bezier& curve);

/// The length of the box's diagonal; 0 for an empty one.
QX_HOST_API double sizeOf(const Box& box);

/// The curve is nowhere farther than this from the chord between its ends.
QX_HOST_API double bendOf(const Bezier& curve);

/// Makes the box hold the curve as well, to within 1e-12 of the size of its hull.
QX_HOST_API void add(Box& box, const Bezier& curve);

/// Cuts a curve into halves, and these again, as long as `goesOn` wants it: asked for each piece, in order
/// along the curve, and whether it is so small that it is not cut again.
template <class GoesOn> void subdivide(const Bezier& curve, GoesOn&& goesOn, int cuts = 30) {
    if (!goesOn(curve, cuts == 0) || cuts == 0) return;
    for (const Bezier& half : halves(curve)) subdivide(half, goesOn, cuts - 1);
}

/// Hands on chords in the place of a curve.
template <class Take> void forEachChord(const Bezier& curve, double tolerance, Take&& take) {
    subdivide(curve, [&](const Bezier& piece, bool isSmall) {
        if (!isSmall && bendOf(piece) > tolerance) return true;
        take(Segment{piece.start(), piece.end()});
        return false;
    });
}

} // namespace qx::shape
