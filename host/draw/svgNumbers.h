// Numbers as SVG likes them: short, without exponents.
#pragma once

#include <cmath>
#include <cstdlib>
#include <string>

namespace qx::draw {

/// Appends `scaled` / `unit`, a power of ten, without zeros that say nothing, and a space before it where it
/// would run into a number that stands there already.
inline void putScaled(std::string& out, long long scaled, long long unit) {
    const bool isAfterNumber = !out.empty() && out.back() >= '0' && out.back() <= '9';
    if (scaled < 0)
        out += '-';
    else if (isAfterNumber)
        out += ' ';
    const long long whole = std::llabs(scaled) / unit;
    long long rest = std::llabs(scaled) % unit;
    if (whole != 0 || rest == 0) out += std::to_string(whole);
    if (rest != 0) out += '.';
    for (long long place = unit / 10; rest != 0; place /= 10) {
        out += static_cast<char>('0' + rest / place);
        rest %= place;
    }
}

/// Appends a value rounded to a multiple of 1 / `unit`; their product must be below 1e18.
inline void putNumber(std::string& out, double value, long long unit = 1000) {
    putScaled(out, std::llround(value * static_cast<double>(unit)), unit);
}

} // namespace qx::draw
