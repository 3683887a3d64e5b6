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

/// The angle whose tangent is `factor` times as large, in the same quarter of the same turn: from an
/// ellipse's angle to its parameter, when that is how often its short axis goes into the long one, and back.
inline double withTangentTimes(double factor, double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    return angle + (std::atan2(s * factor, c) - std::atan2(s, c));
}

} // namespace qx::ge
