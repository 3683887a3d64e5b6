#include "shape/Bezier.h"

#include <algorithm>
#include <cmath>

namespace qx::shape {

// Equal weights stay exactly equal, and the ends of the way are exactly the two points.
WeightedPoint between(const WeightedPoint& a, const WeightedPoint& b, double t) {
    if (t == 1) return b;
    const double weight = a.weight + (b.weight - a.weight) * t;
    return {a.point + (b.point - a.point) * (t * b.weight / weight), weight};
}

Bezier cubic(const AcGePoint3d& start, const AcGeVector3d& startLeg, const AcGePoint3d& end,
             const AcGeVector3d& endLeg) {
    Bezier curve;
    curve.degree = 3;
    curve.points[0].point = start;
    curve.points[1].point = start + startLeg;
    curve.points[2].point = end - endLeg;
    curve.points[3].point = end;
    return curve;
}

AcGePoint3d Bezier::at(double t) const {
    auto left = points;
    for (auto count = static_cast<std::size_t>(degree); count > 0; --count)
        for (std::size_t i = 0; i < count; ++i) left[i] = between(left[i], left[i + 1], t);
    return left[0].point;
}

std::array<Bezier, 2> halves(const Bezier& curve) {
    std::array<Bezier, 2> result;
    auto& [first, second] = result;
    first.degree = second.degree = curve.degree;
    const auto count = static_cast<std::size_t>(curve.degree);
    std::ranges::copy(curve.controls(), second.points.begin());
    for (std::size_t round = 0; round <= count; ++round) {
        first.points[round] = second.points[0];
        for (std::size_t i = 0; i + round < count; ++i)
            second.points[i] = between(second.points[i], second.points[i + 1], 0.5);
    }
    return result;
}

Box hullBox(const Bezier& curve) {
    Box box;
    for (const WeightedPoint& each : curve.controls()) box.add(each.point);
    return box;
}

double sizeOf(const Box& box) { return box.isEmpty() ? 0 : (box.max - box.min).length(); }

double bendOf(const Bezier& curve) {
    const AcGeVector3d chord = curve.end() - curve.start();
    const double square = chord.lengthSqrd();
    double most = 0;
    for (const WeightedPoint& each : curve.controls()) {
        const AcGeVector3d way = each.point - curve.start();
        const double along = square > 0 ? std::clamp(way.dotProduct(chord) / square, 0.0, 1.0) : 0;
        most = std::max(most, (way - chord * along).lengthSqrd());
    }
    return std::sqrt(most);
}

// ---- extents

namespace {

/// A curve along one axis, or against it.
struct Course {
    struct Control {
        double value, weight;
    };
    std::size_t degree;
    std::array<Control, Bezier::mostDegree + 1> controls;

    double bound() const {
        double most = controls[0].value;
        for (std::size_t i = 1; i <= degree; ++i) most = std::max(most, controls[i].value);
        return most;
    }
};

std::array<Course, 2> halves(const Course& course) {
    std::array<Course, 2> result;
    auto& [first, second] = result;
    second = course;
    first.degree = course.degree;
    for (std::size_t round = 0; round <= course.degree; ++round) {
        first.controls[round] = second.controls[0];
        for (std::size_t i = 0; i + round < course.degree; ++i) {
            auto& [value, weight] = second.controls[i];
            const auto& next = second.controls[i + 1];
            const double sum = weight + next.weight;
            value += (next.value - value) * (next.weight / sum);
            weight = sum / 2;
        }
    }
    return result;
}

/// Raises `most` to the highest value of the course; what can't be higher by more than `slack` is left alone.
void raise(double& most, const Course& course, double slack, int cuts = 60) {
    most = std::max({most, course.controls[0].value, course.controls[course.degree].value});
    if (!(course.bound() > most + slack) || cuts == 0) return;
    for (const Course& half : halves(course)) raise(most, half, slack, cuts - 1);
}

double highest(const Bezier& curve, unsigned axis, double sign, double known) {
    Course course;
    course.degree = static_cast<std::size_t>(curve.degree);
    double least = 0, largest = 0;
    for (std::size_t i = 0; i <= course.degree; ++i) {
        const double value = sign * curve.points[i].point[axis];
        course.controls[i] = {value, curve.points[i].weight};
        least = i == 0 ? value : std::min(least, value);
        largest = std::max(largest, std::abs(value));
    }
    constexpr double rounding = 1e-15, tightness = 1e-12;
    raise(known, course, tightness * (course.bound() - least) + rounding * largest);
    return known;
}

} // namespace

void add(Box& box, const Bezier& curve) {
    for (const AcGePoint3d& end : {curve.start(), curve.end()}) box.add(end);
    for (unsigned axis = 0; axis < 3; ++axis) {
        box.max[axis] = highest(curve, axis, 1, box.max[axis]);
        box.min[axis] = -highest(curve, axis, -1, -box.min[axis]);
    }
}

} // namespace qx::shape
