// Splines, piece by piece: from knots and control points, or through given points, to Bézier curves. Both are
// exact up to rounding.
#pragma once

#include "shape/Bezier.h"
#include "shape/Sink.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace qx::shape {

/// One span of a B-spline: degree + 1 control points and twice as many knots as its degree, the span lying
/// between the middle ones. It slides along the spline as knots and points come.
class QX_HOST_API SplineSpan {
public:
    /// From 1 to Bezier::mostDegree.
    explicit SplineSpan(int degree) : degree_{static_cast<std::size_t>(degree)} {}

    void addKnot(double knot);
    void addPoint(const WeightedPoint& point);
    /// False for the empty spans between equal knots.
    bool hasLength() const { return knots_[degree_ - 1] < knots_[degree_]; }
    /// Of a span that has a length and all its knots, which do not fall, and points.
    Bezier bezier() const;

private:
    std::size_t degree_;
    std::array<double, 2 * Bezier::mostDegree> knots_{};
    std::array<WeightedPoint, Bezier::mostDegree + 1> points_{};
};

/// Hands on the spans of a B-spline over the parameters for which it is defined. `nextKnot` and `nextPoint`
/// give one after the other: `pointCount` points, at least degree + 1, and as many knots and degree + 1 more.
template <class NextKnot, class NextPoint>
void drawSpline(int degree, std::size_t pointCount, NextKnot&& nextKnot, NextPoint&& nextPoint, Sink& sink) {
    SplineSpan span{degree};
    nextKnot(); // no span depends on the first one
    for (int i = 0; i < 2 * degree - 1; ++i) span.addKnot(nextKnot());
    for (int i = 0; i < degree; ++i) span.addPoint(nextPoint());
    for (auto i = static_cast<std::size_t>(degree); i < pointCount && !sink.isFull(); ++i) {
        span.addKnot(nextKnot());
        span.addPoint(nextPoint());
        if (span.hasLength()) sink.bezier(span.bezier());
    }
}

/// How a curve through points begins and ends.
struct Ends {
    AcGeVector3d start, end; ///< directions; zero: natural, without curvature
    bool isClosed = false;   ///< it goes on smoothly from the last point to the first, which may be the same
};

/// The cubic curve of continuous curvature through the points, its parameter growing with the chords between
/// them from 0 to 1: its derivative at each point. Of points that follow upon their equal it is the same; it
/// is zero, and the curve straight from point to point, when there are not two different ones, or three of a
/// closed one.
QX_HOST_API std::vector<AcGeVector3d> derivativesThrough(std::span<const AcGePoint3d> points,
                                                         const Ends& ends);

/// Hands on that curve: `walk` calls what it is given with each point and its derivative, in order, with the
/// first ones again at the end of a closed curve that does not return by itself. It is called twice.
template <class Walk> void drawThrough(Walk&& walk, Sink& sink) {
    double length = 0;
    std::optional<AcGePoint3d> from;
    walk([&](const AcGePoint3d& point, const AcGeVector3d&) {
        if (from) length += from->distanceTo(point);
        from = point;
    });
    if (from && !(length > 0)) return sink.segment({*from, *from});
    from.reset();
    AcGeVector3d leaving;
    walk([&](const AcGePoint3d& point, const AcGeVector3d& derivative) {
        const double third = from ? from->distanceTo(point) / length / 3 : 0;
        if (third > 0) sink.bezier(cubic(*from, leaving * third, point, derivative * third));
        from = point;
        leaving = derivative;
    });
}

} // namespace qx::shape
