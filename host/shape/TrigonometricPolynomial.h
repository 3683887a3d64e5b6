// Functions of an angle: constant + cos1 cos t + sin1 sin t + cos2 cos 2t + sin2 sin 2t. What is linear or
// quadratic in the points of an ellipse is one of these in the ellipse's parameter.
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
    double constant = 0, cos1 = 0, sin1 = 0, cos2 = 0, sin2 = 0;

    double at(double t) const {
        const double c = std::cos(t), s = std::sin(t);
        return constant + cos1 * c + sin1 * s + cos2 * (c * c - s * s) + sin2 * 2 * c * s;
    }
    TrigonometricPolynomial derivative() const { return {0, sin1, -cos1, 2 * sin2, -2 * cos2}; }
    TrigonometricPolynomial lowered(double by) const { return {constant - by, cos1, sin1, cos2, sin2}; }

    /// Where the sign changes, in [0, 2 pi) and in no order. A zero at a quarter or three quarters of a turn
    /// may be missing, so may one that is touched and not crossed.
    Zeros signChanges() const;
    /// A sign change between two parameters with values of different sign.
    double zeroBetween(double from, double to) const;
};

} // namespace qx::shape
