#include "shape/TrigonometricPolynomial.h"

#include "ge/angles.h"

#include <span>

namespace qx::shape {
namespace {

// Ends when the middle is one of the ends; the count is for values that are no numbers.
template <class Function> double bisected(const Function& f, double from, double to) {
    const bool isNegativeAtStart = f(from) < 0;
    for (int i = 0; i < 200; ++i) {
        const double middle = from + (to - from) / 2;
        if (middle == from || middle == to) break;
        ((f(middle) < 0) == isNegativeAtStart ? from : to) = middle;
    }
    return from + (to - from) / 2;
}

double valueAt(std::span<const double> coefficients, double x) {
    double value = 0;
    for (std::size_t i = coefficients.size(); i-- > 0;) value = value * x + coefficients[i];
    return value;
}

// Between two zeros of its derivative a polynomial crosses zero once at most.
Zeros crossings(std::span<const double> coefficients) {
    Zeros found;
    if (coefficients.size() < 2) return found;
    std::array<double, 4> slope{};
    for (std::size_t i = 1; i < coefficients.size(); ++i)
        slope[i - 1] = static_cast<double>(i) * coefficients[i];
    Zeros borders = crossings({slope.data(), coefficients.size() - 1});
    borders.add(1);
    double from = -1;
    for (const double to : borders) {
        if ((valueAt(coefficients, from) < 0) != (valueAt(coefficients, to) < 0))
            found.add(bisected([&](double x) { return valueAt(coefficients, x); }, from, to));
        from = to;
    }
    return found;
}

/// In x = tan(t / 2), and multiplied by (1 + x^2)^2, the function is a polynomial of degree four.
Zeros crossingsNearZero(const TrigonometricPolynomial& f) {
    const double polynomial[] = {f.constant, 2 * f.s1, 2 * (f.constant + f.q1), 2 * f.s1 + 4 * f.qs,
                                 f.constant + 2 * f.q1 + 4 * f.qq};
    return crossings(polynomial);
}

} // namespace

// Each half of the circle is looked at around its own middle, so that x stays between -1 and 1.
Zeros TrigonometricPolynomial::signChanges() const {
    const TrigonometricPolynomial turned{constant + 2 * q1 + 4 * qq, -q1 - 4 * qq, -s1 - 2 * qs, qq, qs};
    Zeros found;
    for (const double x : crossingsNearZero(*this)) found.add(2 * std::atan(x));
    for (const double x : crossingsNearZero(turned))
        found.add(2 * std::atan(x) + (x < 0 ? std::numbers::pi : -std::numbers::pi));
    return found;
}

double TrigonometricPolynomial::zeroBetween(double from, double to) const {
    return bisected([this](double t) { return at(t); }, from, to);
}

// s^2 = 2 q - q^2 keeps products among these functions.
TrigonometricPolynomial squared(const TrigonometricPolynomial& f) {
    return {f.constant * f.constant, 2 * (f.constant * f.q1 + f.s1 * f.s1), 2 * f.constant * f.s1,
            f.q1 * f.q1 - f.s1 * f.s1, 2 * f.q1 * f.s1};
}

} // namespace qx::shape
