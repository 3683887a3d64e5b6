// Points in space, in drawing units; three doubles in a row and nothing else, so that plain arrays of three
// can be looked at as points.
#pragma once

#include "gevec3d.h"

class AcGeMatrix3d;

class AcGePoint3d {
public:
    static const AcGePoint3d kOrigin;

    double x = 0;
    double y = 0;
    double z = 0;

    constexpr AcGePoint3d() = default;
    constexpr AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

    constexpr double operator[](unsigned i) const { return i == 0 ? x : i == 1 ? y : z; }
    constexpr double& operator[](unsigned i) { return i == 0 ? x : i == 1 ? y : z; }
    constexpr AcGePoint3d& set(double xx, double yy, double zz) { return *this = {xx, yy, zz}; }
    constexpr AcGeVector3d asVector() const { return {x, y, z}; }

    constexpr AcGePoint3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    constexpr AcGePoint3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    constexpr AcGeVector3d operator-(const AcGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
    constexpr AcGePoint3d operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
    constexpr AcGePoint3d operator/(double divisor) const { return {x / divisor, y / divisor, z / divisor}; }
    constexpr AcGePoint3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
    constexpr AcGePoint3d& operator-=(const AcGeVector3d& v) { return *this = *this - v; }

    double distanceTo(const AcGePoint3d& p) const { return (*this - p).length(); }
    /// Turns this point about the axis through `wrtPoint`; radians. A zero axis turns nothing.
    AcGePoint3d& rotateBy(double angle, const AcGeVector3d& axis, const AcGePoint3d& wrtPoint = kOrigin) {
        return *this = wrtPoint + (*this - wrtPoint).rotateBy(angle, axis);
    }
    AcGePoint3d& transformBy(const AcGeMatrix3d& m);

    /// True when the distance is at most the point tolerance.
    bool isEqualTo(const AcGePoint3d& p, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(p) <= tol.equalPoint();
    }
    /// Equality within the default tolerance.
    bool operator==(const AcGePoint3d& p) const { return isEqualTo(p); }
};

inline constexpr AcGePoint3d AcGePoint3d::kOrigin{0, 0, 0};

#include "gemat3d.h" // body of transformBy
