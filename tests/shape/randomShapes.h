// Seeded arcs, points and maps, and the arc seen as many points: what the laws of this folder compare with.
#pragma once

#include "shape/Primitives.h"

#include <random>
#include <vector>

namespace shapes {

class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}

    double number(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(engine_);
    }
    bool oneIn(int n) { return std::uniform_int_distribution<int>(1, n)(engine_) == 1; }
    AcGeVector3d vector(double size) {
        return {number(-size, size), number(-size, size), number(-size, size)};
    }
    AcGePoint3d point(double size) { return AcGePoint3d::kOrigin + vector(size); }
    AcGeMatrix3d map() { return AcGeMatrix3d{}.setCoordSystem(point(5), vector(2), vector(2), vector(2)); }

    /// Any ellipse in space, often flat, sometimes a circle in the plane; often a whole number of quarters.
    qx::shape::EllipticArc arc() {
        AcGeVector3d u = vector(10), v = vector(10);
        if (oneIn(3)) v *= std::pow(10, number(-8, 0));
        if (oneIn(4)) u = {number(0.1, 9), 0, 0}, v = {0, u.x, 0};
        const double quarter = std::numbers::pi / 2;
        double sweep = number(1e-3, 4 * quarter);
        if (oneIn(3)) sweep = std::ceil(sweep / quarter) * quarter;
        return {point(10), u, v, sweep, std::cos(sweep), std::sin(sweep)};
    }

private:
    std::mt19937_64 engine_;
};

constexpr int sampleCount = 3000;

inline std::vector<AcGePoint3d> samplesOf(const qx::shape::EllipticArc& arc) {
    std::vector<AcGePoint3d> points;
    for (int i = 0; i <= sampleCount; ++i) {
        const double t = arc.sweep * i / sampleCount;
        points.push_back(arc.at(std::cos(t), std::sin(t)));
    }
    return points;
}

/// No point of the arc is farther than this from the nearest sample.
inline double sampleDistance(const qx::shape::EllipticArc& arc) {
    return (arc.u.length() + arc.v.length()) * arc.sweep / sampleCount;
}

} // namespace shapes
