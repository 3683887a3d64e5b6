// Directions and displacements in a plane. Angles are radians, counter-clockwise from +X. Operations on a
// vector of zero length (not above the vector tolerance) never fail: it stays as it is and is neither
// parallel nor perpendicular to anything.
#pragma once

#include "gegbl.h"

#include <cmath>
#include <numbers>

class AcGeVector2d {
public:
    static const AcGeVector2d kIdentity; ///< (0, 0)
    static const AcGeVector2d kXAxis;
    static const AcGeVector2d kYAxis;

    double x = 0;
    double y = 0;

    constexpr AcGeVector2d() = default;
    constexpr AcGeVector2d(double xx, double yy) : x(xx), y(yy) {}

    constexpr double operator[](unsigned i) const { return i == 0 ? x : y; }
    constexpr double& operator[](unsigned i) { return i == 0 ? x : y; }
    constexpr AcGeVector2d& set(double xx, double yy) { return *this = {xx, yy}; }

    constexpr AcGeVector2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    constexpr AcGeVector2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    constexpr AcGeVector2d operator-() const { return {-x, -y}; }
    constexpr AcGeVector2d operator*(double factor) const { return {x * factor, y * factor}; }
    constexpr AcGeVector2d operator/(double divisor) const { return {x / divisor, y / divisor}; }
    constexpr AcGeVector2d& operator+=(const AcGeVector2d& v) { return *this = *this + v; }
    constexpr AcGeVector2d& operator-=(const AcGeVector2d& v) { return *this = *this - v; }
    constexpr AcGeVector2d& operator*=(double factor) { return *this = *this * factor; }
    constexpr AcGeVector2d& operator/=(double divisor) { return *this = *this / divisor; }
    constexpr AcGeVector2d& negate() { return *this = -*this; }

    constexpr double dotProduct(const AcGeVector2d& v) const { return x * v.x + y * v.y; }
    constexpr double lengthSqrd() const { return dotProduct(*this); }
    double length() const { return std::sqrt(lengthSqrd()); }
    /// This vector turned by a quarter counter-clockwise.
    constexpr AcGeVector2d perpVector() const { return {-y, x}; }

    /// Makes the length 1; a vector of zero length is left as it is.
    AcGeVector2d& normalize(const AcGeTol& tol = AcGeContext::gTol) {
        return isZeroLength(tol) ? *this : *this /= length();
    }
    /// The same, and says in `flag` whether there was a direction to keep.
    AcGeVector2d& normalize(const AcGeTol& tol, AcGe::ErrorCondition& flag) {
        flag = isZeroLength(tol) ? AcGe::k0This : AcGe::kOk;
        return normalize(tol);
    }
    AcGeVector2d normal(const AcGeTol& tol = AcGeContext::gTol) const {
        return AcGeVector2d{*this}.normalize(tol);
    }

    /// Direction in [0, 2 pi); 0 for a zero vector.
    double angle() const {
        constexpr double fullTurn = 2 * std::numbers::pi;
        const double a = std::atan2(y, x);
        if (a >= 0) return a + 0.0; // no negative zero
        return a + fullTurn < fullTurn ? a + fullTurn : std::nextafter(fullTurn, 0.0);
    }
    /// Angle between the two directions in [0, pi]; 0 when one is a zero vector.
    double angleTo(const AcGeVector2d& v) const {
        return std::atan2(std::abs(x * v.y - y * v.x), dotProduct(v));
    }
    /// Turns this vector.
    AcGeVector2d& rotateBy(double angle) {
        const double c = std::cos(angle), s = std::sin(angle);
        return *this = {x * c - y * s, x * s + y * c};
    }

    bool isEqualTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return (*this - v).length() <= tol.equalVector();
    }
    bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const { return length() <= tol.equalVector(); }
    bool isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::abs(length() - 1) <= tol.equalVector();
    }
    /// True for equal directions only.
    bool isCodirectionalTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return bothHaveDirections(v, tol) && (normal(tol) - v.normal(tol)).length() < tol.equalVector();
    }
    /// True for equal and for opposite directions.
    bool isParallelTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return isCodirectionalTo(v, tol) || isCodirectionalTo(-v, tol);
    }
    bool isPerpendicularTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return bothHaveDirections(v, tol) &&
               std::abs(normal(tol).dotProduct(v.normal(tol))) <= tol.equalVector();
    }

    /// Equality within the default tolerance.
    bool operator==(const AcGeVector2d& v) const { return isEqualTo(v); }

private:
    bool bothHaveDirections(const AcGeVector2d& v, const AcGeTol& tol) const {
        return !isZeroLength(tol) && !v.isZeroLength(tol);
    }
};

inline constexpr AcGeVector2d AcGeVector2d::kIdentity{0, 0};
inline constexpr AcGeVector2d AcGeVector2d::kXAxis{1, 0};
inline constexpr AcGeVector2d AcGeVector2d::kYAxis{0, 1};

constexpr AcGeVector2d operator*(double factor, const AcGeVector2d& v) { return v * factor; }
