// Vectors of the XY plane that owe nothing to the geometry that is tested with them.
#pragma once

#include "gepnt2d.h"
#include "gepnt3d.h"

#include <cmath>

namespace qx::tests {

struct Plane {
    double x = 0, y = 0;

    Plane() = default;
    Plane(double xx, double yy) : x{xx}, y{yy} {}
    explicit Plane(const AcGePoint3d& p) : x{p.x}, y{p.y} {}
    explicit Plane(const AcGePoint2d& p) : x{p.x}, y{p.y} {}
    static Plane towards(double angle) { return {std::cos(angle), std::sin(angle)}; }

    Plane operator+(const Plane& o) const { return {x + o.x, y + o.y}; }
    Plane operator-(const Plane& o) const { return {x - o.x, y - o.y}; }
    Plane operator*(double factor) const { return {x * factor, y * factor}; }
    /// Turned and stretched as 1,0 is to become `o`.
    Plane turned(const Plane& o) const { return {x * o.x - y * o.y, x * o.y + y * o.x}; }
    Plane left() const { return {-y, x}; }
    double along(const Plane& o) const { return x * o.x + y * o.y; }
    double across(const Plane& o) const { return x * o.y - y * o.x; } ///< positive when `o` is to the left
    double length() const { return std::hypot(x, y); }
    Plane unit() const { return *this * (1 / length()); }
    AcGePoint2d point() const { return {x, y}; }
};

} // namespace qx::tests
