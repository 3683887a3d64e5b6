#include "shape/arcs.h"

#include <algorithm>

namespace qx::shape {

EllipticArc ellipticArc(const AcGePoint3d& centre, const AcGeVector3d& major, const AcGeVector3d& minor,
                        double start, double sweep) {
    const double c = std::cos(start), s = std::sin(start);
    const AcGeVector3d u = major * c + minor * s, v = minor * c - major * s;
    const double size = std::min(std::abs(sweep), fullTurn);
    const bool isClosed = size >= fullTurn;
    return {
        centre, u, sweep < 0 ? -v : v, size, isClosed ? 1 : std::cos(size), isClosed ? 0 : std::sin(size)};
}

EllipticArc circleArc(const AcGePoint3d& centre, const AcGeVector3d& xAxis, const AcGeVector3d& yAxis,
                      double radius, double startAngle, double sweep) {
    return ellipticArc(centre, xAxis * radius, yAxis * radius, startAngle, sweep);
}

EllipticArc fullCircle(const AcGePoint3d& centre, const AcGeVector3d& xAxis, const AcGeVector3d& yAxis,
                       double radius) {
    return {centre, xAxis * radius, yAxis * radius, fullTurn, 1, 0};
}

EllipticArc arcFromBulge(const AcGePoint3d& start, const AcGePoint3d& end, double bulge,
                         const AcGeVector3d& normal) {
    const AcGeVector3d chord = end - start, left = normal.crossProduct(chord);
    // Tangent of a quarter angle, hence cosine and sine of the half: no trigonometry but for the angle
    // itself.
    const double b = bulge * bulge, cosHalf = (1 - b) / (1 + b), sinHalf = 2 * std::abs(bulge) / (1 + b);
    const double toCentre = (1 - b) / (4 * bulge); // from the chord's middle, in chords to the left
    const AcGeVector3d u = chord * -0.5 - left * toCentre;
    const AcGeVector3d v = chord * toCentre - left * 0.5; // normal x u
    return {start - u,
            u,
            bulge < 0 ? -v : v,
            std::min(4 * std::atan(std::abs(bulge)), fullTurn),
            cosHalf * cosHalf - sinHalf * sinHalf,
            2 * sinHalf * cosHalf};
}

} // namespace qx::shape
