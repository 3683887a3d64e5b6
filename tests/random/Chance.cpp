#include "random/Chance.h"

#include <cmath>
#include <cstdio>
#include <numbers>

namespace qx::tests {
namespace {
constexpr double scales[] = {1, 1, 1, 1, 1e-3, 1e4};

// In seven decimals, and the nearest numbers that are on the other side.
constexpr double corners[] = {0, 1.5707963, 3.1415926, 4.7123889, 6.2831852};
} // namespace

std::string decimal(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

Chance::Chance(unsigned seed) : Random{seed}, scale_{oneOf(scales)} {}

double Chance::coordinate() {
    if (!used_.empty() && oneIn(5)) return oneOf(used_);
    const double any = number(-500, 500);
    used_.push_back((oneIn(2) ? std::round(any / 10) * 10 : any) * scale_);
    return used_.back();
}

AcGePoint3d Chance::place() { return {coordinate(), coordinate(), oneIn(5) ? coordinate() : 0}; }

double Chance::angle() {
    if (oneIn(3)) return oneOf(corners) + static_cast<double>(below(5)) * 5e-8 - 1e-7;
    return oneIn(3) ? static_cast<double>(below(24)) * std::numbers::pi / 12 : number(0, 6.28);
}

double Chance::length() {
    return scale_ * (oneIn(2) ? 10 * (1 + static_cast<double>(below(9))) : number(1, 90));
}

AcGeVector3d Chance::direction() {
    const double towards = angle();
    return {std::cos(towards), std::sin(towards), oneIn(8) ? number(-1, 1) : 0};
}

} // namespace qx::tests
