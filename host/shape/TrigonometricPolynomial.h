// Functions of an angle t, written in q = 1 - cos t and s = sin t: constant + q1 q + s1 s + qq q^2 + qs q s.
// What is linear or quadratic in the points of an ellipse is one of these in the ellipse's parameter. All
// terms but the first vanish with t, so that short arcs of huge ellipses lose nothing when t is counted from
// their middle.
#pragma once

#include <array>
#include <cmath>

namespace qx::shape {

/// The places where a function crosses zero; there is room for more than any of these functions has.
struct Zeros {
    std::array<double, 12> values{};
    int count = 0;

    void add(double value) {
        if (count < static_cast<int>(values.size())) values[static_cast<std::size_t>(count++)] = value;
    }
    const double* begin() const { return values.data(); }
    const double* end() const { return values.data() + count; }
};

struct TrigonometricPolynomial {
    double constant = 0, q1 = 0, s1 = 0, qq = 0, qs = 0;

    double at(double t) const {
        const double half = std::sin(t / 2), q = 2 * half * half, s = std::sin(t);
        return constant + (q1 * q + s1 * s + (qq * q + qs * s) * q);
    }
    TrigonometricPolynomial derivative() const { return {s1, 3 * qs - s1, q1, -2 * qs, 2 * qq}; }
    TrigonometricPolynomial lowered(double by) const { return {constant - by, q1, s1, qq, qs}; }
    TrigonometricPolynomial scaled(double by) const {
        return {constant * by, q1 * by, s1 * by, qq * by, qs * by};
    }

    /// Where the sign changes, from -pi to pi and in no order. A zero at a quarter of a turn, either way, may
    /// be missing, so may one that is touched and not crossed.
    Zeros signChanges() const;
    /// A sign change between two parameters with values of different sign.
    double zeroBetween(double from, double to) const;
};

/// The square of a function without quadratic terms.
TrigonometricPolynomial squared(const TrigonometricPolynomial& linear);

} // namespace qx::shape
