// Directions and displacements in space. Angles are radians, counter-clockwise when seen against the axis.
// Operations on a vector of zero length (not above the vector tolerance) never fail: it stays as it is and is
// neither parallel nor perpendicular to anything.
#pragma once

#include "gegbl.h"

#include <cmath>
#include <numbers>

class AcGeMatrix3d;

class AcGeVector3d {
public:
    static const AcGeVector3d kIdentity; ///< (0, 0, 0)
    static const AcGeVector3d kXAxis;
    static const AcGeVector3d kYAxis;
    static const AcGeVector3d kZAxis;

    double x = 0;
    double y = 0;
    double z = 0;

    constexpr AcGeVector3d() = default;
    constexpr AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

    constexpr double operator[](unsigned i) const { return i == 0 ? x : i == 1 ? y : z; }
    constexpr double& operator[](unsigned i) { return i == 0 ? x : i == 1 ? y : z; }
    constexpr AcGeVector3d& set(double xx, double yy, double zz) { return *this = {xx, yy, zz}; }

    constexpr AcGeVector3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    constexpr AcGeVector3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    constexpr AcGeVector3d operator-() const { return {-x, -y, -z}; }
    constexpr AcGeVector3d operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
    constexpr AcGeVector3d operator/(double divisor) const { return {x / divisor, y / divisor, z / divisor}; }
    constexpr AcGeVector3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
    constexpr AcGeVector3d& operator-=(const AcGeVector3d& v) { return *this = *this - v; }
    constexpr AcGeVector3d& operator*=(double factor) { return *this = *this * factor; }
    constexpr AcGeVector3d& operator/=(double divisor) { return *this = *this / divisor; }
    constexpr AcGeVector3d& negate() { return *this = -*this; }

    constexpr double dotProduct(const AcGeVector3d& v) const { return x * v.x + y * v.y + z * v.z; }
    constexpr AcGeVector3d crossProduct(const AcGeVector3d& v) const {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }
    constexpr double lengthSqrd() const { return dotProduct(*this); }
    double length() const { return std::sqrt(lengthSqrd()); }

    /// Makes the length 1; a vector of zero length is left as it is.
    AcGeVector3d& normalize(const AcGeTol& tol = AcGeContext::gTol) {
        return isZeroLength(tol) ? *this : *this /= length();
    }
    /// The same, and says in `flag` whether there was a direction to keep.
    AcGeVector3d& normalize(const AcGeTol& tol, AcGe::ErrorCondition& flag) {
        flag = isZeroLength(tol) ? AcGe::k0This : AcGe::kOk;
        return normalize(tol);
    }
    AcGeVector3d normal(const AcGeTol& tol = AcGeContext::gTol) const {
        return AcGeVector3d{*this}.normalize(tol);
    }

    /// Angle between the two directions in [0, pi]; 0 when one is a zero vector.
    double angleTo(const AcGeVector3d& v) const {
        return std::atan2(crossProduct(v).length(), dotProduct(v));
    }
    /// Angle from this direction to `v` in [0, 2 pi), counter-clockwise about `refVec`.
    double angleTo(const AcGeVector3d& v, const AcGeVector3d& refVec) const {
        constexpr double fullTurn = 2 * std::numbers::pi;
        const double a = angleTo(v);
        if (!(crossProduct(v).dotProduct(refVec) < 0)) return a;
        return fullTurn - a < fullTurn ? fullTurn - a : std::nextafter(fullTurn, 0.0);
    }
    /// Turns this vector about an axis of any length; a zero axis turns nothing.
    AcGeVector3d& rotateBy(double angle, const AcGeVector3d& axis);
    /// Applies the linear part of a matrix.
    AcGeVector3d& transformBy(const AcGeMatrix3d& m);

    bool isEqualTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return (*this - v).length() <= tol.equalVector();
    }
    bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const { return length() <= tol.equalVector(); }
    bool isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::abs(length() - 1) <= tol.equalVector();
    }
    /// True for equal directions only.
    bool isCodirectionalTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return bothHaveDirections(v, tol) && (normal(tol) - v.normal(tol)).length() < tol.equalVector();
    }
    /// True for equal and for opposite directions.
    bool isParallelTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return isCodirectionalTo(v, tol) || isCodirectionalTo(-v, tol);
    }
    bool isPerpendicularTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return bothHaveDirections(v, tol) &&
               std::abs(normal(tol).dotProduct(v.normal(tol))) <= tol.equalVector();
    }

    /// Equality within the default tolerance.
    bool operator==(const AcGeVector3d& v) const { return isEqualTo(v); }

private:
    bool bothHaveDirections(const AcGeVector3d& v, const AcGeTol& tol) const {
        return !isZeroLength(tol) && !v.isZeroLength(tol);
    }
};

inline constexpr AcGeVector3d AcGeVector3d::kIdentity{0, 0, 0};
inline constexpr AcGeVector3d AcGeVector3d::kXAxis{1, 0, 0};
inline constexpr AcGeVector3d AcGeVector3d::kYAxis{0, 1, 0};
inline constexpr AcGeVector3d AcGeVector3d::kZAxis{0, 0, 1};

constexpr AcGeVector3d operator*(double factor, const AcGeVector3d& v) { return v * factor; }

#include "gepnt3d.h" // brings the bodies of rotateBy and transformBy
