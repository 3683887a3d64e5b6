// Arithmetic of angles, in radians.
#pragma once

#include <cmath>
#include <numbers>

namespace qx::ge {

constexpr double fullTurn = 2 * std::numbers::pi;

/// The counter-clockwise way from one angle to another in (0, 2 pi]; angles that differ by less than 1e-10,
/// whole turns aside, are a full turn: a rounded 0 to 2 pi must not shrink to nothing. So are angles that are
/// no numbers.
inline double sweepBetween(double startAngle, double endAngle) {
    const double turn = std::remainder(endAngle - startAngle, fullTurn);
    if (!(std::abs(turn) > 1e-10)) return fullTurn;
    return turn > 0 ? turn : turn + fullTurn;
}

} // namespace qx::ge
