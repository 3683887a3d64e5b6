// Points in a plane, in drawing units. Which plane is the caller's business.
#pragma once

#include "gevec2d.h"

class AcGePoint2d {
public:
    static const AcGePoint2d kOrigin;

    double x = 0;
    double y = 0;

    constexpr AcGePoint2d() = default;
    constexpr AcGePoint2d(double xx, double yy) : x(xx), y(yy) {}

    constexpr double operator[](unsigned i) const { return i == 0 ? x : y; }
    constexpr double& operator[](unsigned i) { return i == 0 ? x : y; }
    constexpr AcGePoint2d& set(double xx, double yy) { return *this = {xx, yy}; }
    constexpr AcGeVector2d asVector() const { return {x, y}; }

    constexpr AcGePoint2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    constexpr AcGePoint2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    constexpr AcGeVector2d operator-(const AcGePoint2d& p) const { return {x - p.x, y - p.y}; }
    constexpr AcGePoint2d operator*(double factor) const { return {x * factor, y * factor}; }
    constexpr AcGePoint2d operator/(double divisor) const { return {x / divisor, y / divisor}; }
    constexpr AcGePoint2d& operator+=(const AcGeVector2d& v) { return *this = *this + v; }
    constexpr AcGePoint2d& operator-=(const AcGeVector2d& v) { return *this = *this - v; }

    double distanceTo(const AcGePoint2d& p) const { return (*this - p).length(); }
    /// Turns this point about another one; radians, counter-clockwise.
    AcGePoint2d& rotateBy(double angle, const AcGePoint2d& wrtPoint = kOrigin) {
        return *this = wrtPoint + (*this - wrtPoint).rotateBy(angle);
    }

    /// True when the distance is at most the point tolerance.
    bool isEqualTo(const AcGePoint2d& p, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(p) <= tol.equalPoint();
    }
    /// Equality within the default tolerance.
    bool operator==(const AcGePoint2d& p) const { return isEqualTo(p); }
};

inline constexpr AcGePoint2d AcGePoint2d::kOrigin{0, 0};
