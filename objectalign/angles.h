// The angles that the alignments compare with and turn by, in radians. They are cut to seven decimals and are
// no multiples of pi: whether something is turned the long or the short way near a right angle, and what two
// half turns leave, follow from exactly these values.
#pragma once

namespace qx::objectalign {

inline constexpr double HALF_PI = 1.5707963;
inline constexpr double PI = 3.1415926;
inline constexpr double THREE_HALF_PI = 4.7123889;

/// What a comparison and a correction make of a turn: beyond a quarter turn one way, it is taken back by a
/// half turn. Turns the other way, however far, stay.
constexpr double turnedTheShortWay(double turnAngle) {
    return turnAngle > HALF_PI ? turnAngle - PI : turnAngle;
}

/// An edge has no sense of direction: the angle of one that points backwards is brought below a half turn.
constexpr double foldedEdgeAngle(double edgeAngle) { return edgeAngle > PI ? edgeAngle - PI : edgeAngle; }

} // namespace qx::objectalign
