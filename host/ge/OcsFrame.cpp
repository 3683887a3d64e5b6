#include "ge/OcsFrame.h"

#include <algorithm>

namespace qx::ge {
namespace {

// Divided by the largest coordinate first, so that neither huge nor tiny directions leave the range of
// squares.
AcGeVector3d unitVector(const AcGeVector3d& v) {
    const AcGeVector3d scaled = v / std::max({std::abs(v.x), std::abs(v.y), std::abs(v.z)});
    return scaled / scaled.length();
}

bool hasDirection(const AcGeVector3d& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z) &&
           (v.x != 0 || v.y != 0 || v.z != 0);
}

} // namespace

// The "arbitrary axis" rule of the drawing format: X is taken from the world's Y or Z, whichever is safely
// away from the direction; the limit of 1/64 is part of the rule.
OcsFrame::OcsFrame(const AcGeVector3d& normal) {
    if (normal.x == 0 && normal.y == 0 && normal.z > 0) return; // nearly always
    if (!hasDirection(normal)) return;
    const AcGeVector3d n = unitVector(normal);
    constexpr double limit = 1.0 / 64;
    const bool isNearWorldZ = std::abs(n.x) < limit && std::abs(n.y) < limit;
    z = n;
    x = unitVector((isNearWorldZ ? AcGeVector3d::kYAxis : AcGeVector3d::kZAxis).crossProduct(n));
    y = unitVector(n.crossProduct(x));
}

} // namespace qx::ge
