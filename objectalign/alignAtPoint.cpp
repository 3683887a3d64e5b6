#include "objectalign/alignAtPoint.h"

#include "dbobjptr.h"
#include "kernel/plane.h"
#include "objectalign/AlignmentEdge.h"
#include "objectalign/ArcTurn.h"
#include "objectalign/baseLineDirection.h"
#include "objectalign/crossing.h"

namespace qx::objectalign {
namespace {
using kernel::inPlane;

struct Target {
    AcGePoint3d point;
    double angle;
    AcGeVector2d outward; ///< unit vector in which the spacing goes
    double spacing;
    bool adjustSpacing;
};

Turned turnArcAt(AcDbObjectId id, const Target& target) {
    const AcDbObjectPointer<AcDbArc> arc{id, AcDb::kForWrite};
    if (arc.openStatus() != Acad::eOk) return {arc.openStatus()};
    const AcGePoint3d ground = kernel::onGround(target.point);
    const AcDbLine baseLine{ground, ground + kernel::inSpace(kernel::unitAt(target.angle))};
    const ArcTurn turned = turnArc(*arc.object(), target.angle, baseLine);
    if (!turned.hasApex) return {turned.status};
    return {turned.status, inPlane(turned.apex)};
}

Turned turn(AcDbObjectId id, const Target& target) {
    AlignmentEdge edge;
    const int found = readAlignmentEdge(id, {EdgeRequest::Purpose::point, target.point, target.angle}, edge);
    if (found != Acad::eOk) return {found};
    return edge.isArc ? turnArcAt(id, target) : turnByEdge(id, edge, target.angle);
}

int alignAt(AcDbObjectId id, const Target& target, const FindAcross& findAcross) {
    const Turned turned = turn(id, target);
    if (turned.status != Acad::eOk || !turned.middle) return turned.status;
    AcGePoint2d goal = inPlane(target.point);
    if (target.adjustSpacing) goal += target.outward * (target.spacing + turned.extraSpacing);
    const bool mayTurn = !target.adjustSpacing || target.spacing != 0.0;
    return moveClearOf(mayTurn ? findAcross : nullptr, id, *turned.middle, goal);
}

} // namespace

int alignObjectToGivenLine(AcDbObjectId objectId, double targetAngle, double spacing, bool adjustSpacing,
                           const AcGePoint3d& firstPoint, const AcGePoint3d& secondAlignPoint,
                           AcDbObjectId baseLineId) {
    AcGeVector2d direction = inPlane(secondAlignPoint - firstPoint);
    const auto opened = readDirection(baseLineId, direction);
    if (opened != Acad::eOk) return opened;
    const Target target{firstPoint, targetAngle, leftOf(direction), spacing, adjustSpacing};
    return alignAt(objectId, target, meeting(baseLineId));
}

int alignObjectToGivenCircle(AcDbObjectId objectId, double targetAngle, double spacing, bool adjustSpacing,
                             const AcGePoint3d& alignPoint, const AcGePoint3d& centre, double radius) {
    const Target target{alignPoint, targetAngle, inPlane(alignPoint - centre).normal(), spacing,
                        adjustSpacing};
    return alignAt(objectId, target, reachingInside(centre, radius));
}

} // namespace qx::objectalign
