#include "gearc3d.h"

#include "ge/OcsFrame.h"
#include "ge/angles.h"

using qx::ge::fullTurn;
using qx::ge::OcsFrame;
using qx::ge::sweepBetween;

AcGeCircArc3d::AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : AcGeCircArc3d{center, normal, AcGeVector3d{}, radius, 0, fullTurn} {}

AcGeCircArc3d::AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal,
                             const AcGeVector3d& refVec, double radius, double startAng, double endAng)
    : center_{center}, radius_{std::abs(radius)}, startAngle_{startAng}, sweep_{
                                                                             sweepBetween(startAng, endAng)} {
    const OcsFrame frame{normal};
    const AcGeVector3d flat = refVec - frame.z * refVec.dotProduct(frame.z);
    const bool hasReference = flat.length() > 1e-12 * refVec.length();
    xAxis_ = hasReference ? flat / flat.length() : frame.x;
    yAxis_ = hasReference ? frame.z.crossProduct(xAxis_) : frame.y;
}

AcGePoint3d AcGeCircArc3d::closestPointTo(const AcGePoint3d& point) const {
    const AcGeVector3d way = point - center_;
    const double x = way.dotProduct(xAxis_), y = way.dotProduct(yAxis_), size = std::hypot(x, y);
    const double pastStart = std::remainder(std::atan2(y, x) - startAngle_, fullTurn);
    const bool isWithin = (pastStart < 0 ? pastStart + fullTurn : pastStart) <= sweep_;
    if (isWithin && size > 0) return center_ + (xAxis_ * (x / size) + yAxis_ * (y / size)) * radius_;
    const AcGePoint3d start = startPoint(), end = endPoint();
    return end.distanceTo(point) < start.distanceTo(point) && sweep_ < fullTurn ? end : start;
}
