#include "objectalign/alignAtPoint.h"

#include "dbobjptr.h"
#include "kernel/classTests.h"
#include "kernel/entityAccess.h"
#include "kernel/midpoint.h"
#include "kernel/plane.h"
#include "kernel/rotations.h"
#include "objectalign/AlignmentEdge.h"
#include "objectalign/ArcTurn.h"
#include "objectalign/angles.h"
#include "objectalign/baseLineDirection.h"
#include "objectalign/crossing.h"

#include <optional>

namespace qx::objectalign {
namespace {
using kernel::inPlane;
using kernel::inSpace;
using kernel::unitAt;

struct Target {
    AcGePoint3d point;
    double angle;
    AcGeVector2d outward; ///< unit vector in which the spacing goes
    double spacing;
    bool adjustSpacing;
};

/// An object that was turned, and what of it is to come to the point; without a middle it stays where it is.
struct Turned {
    int status;
    std::optional<AcGePoint2d> middle = std::nullopt;
    double extraSpacing = 0;
};

Turned turnArcAt(AcDbObjectId id, const Target& target) {
    const AcDbObjectPointer<AcDbArc> arc{id, AcDb::kForWrite};
    if (arc.openStatus() != Acad::eOk) return {arc.openStatus()};
    const AcGePoint3d ground = inSpace(inPlane(target.point));
    const AcDbLine baseLine{ground, ground + inSpace(unitAt(target.angle))};
    const ArcTurn turned = turnArc(*arc.object(), target.angle, baseLine);
    if (!turned.hasApex) return {turned.status};
    return {turned.status, inPlane(turned.apex)};
}

Turned turnEdge(AcDbObjectId id, const AlignmentEdge& edge, const Target& target) {
    const double turnAngle = edge.turnTo(target.angle);
    AcGePoint2d middle = inPlane(kernel::midpointXY(edge.basePoint, edge.secondPoint));
    middle.rotateBy(turnAngle, inPlane(edge.basePoint));
    return {kernel::rotateEntity(id, edge.basePoint, turnAngle), middle, edge.extraSpacing};
}

Turned turn(AcDbObjectId id, const Target& target) {
    AcDbObjectPointer<AcDbEntity> entity{id};
    if (entity.openStatus() != Acad::eOk) return {entity.openStatus()};
    const bool isArc = kernel::asArc(entity) != nullptr;
    AlignmentEdge edge;
    const int found =
        findAlignmentEdge(*entity.object(), {EdgeRequest::Purpose::point, target.point, target.angle}, edge);
    entity.close();
    if (isArc) return turnArcAt(id, target);
    return found == Acad::eOk ? turnEdge(id, edge, target) : Turned{found};
}

template <class FindAcross> int alignAt(AcDbObjectId id, const Target& target, const FindAcross& findAcross) {
    const Turned turned = turn(id, target);
    if (turned.status != Acad::eOk || !turned.middle) return turned.status;
    AcGePoint2d goal = inPlane(target.point);
    if (target.adjustSpacing) goal += target.outward * (target.spacing + turned.extraSpacing);
    auto status =
        kernel::transformEntity(id, AcGeMatrix3d{}.setToTranslation(inSpace(goal - *turned.middle)));
    const bool mayTurn = !target.adjustSpacing || target.spacing != 0.0;
    bool isAcross = false;
    if (status == Acad::eOk && mayTurn) status = findAcross(isAcross);
    if (status != Acad::eOk || !isAcross) return status;
    return kernel::rotateEntity(id, inSpace(goal), PI);
}

} // namespace

int alignObjectToGivenLine(AcDbObjectId objectId, double targetAngle, double spacing, bool adjustSpacing,
                           const AcGePoint3d& firstPoint, const AcGePoint3d& secondAlignPoint,
                           AcDbObjectId baseLineId) {
    AcGeVector2d direction = inPlane(secondAlignPoint - firstPoint);
    const auto opened = readDirection(baseLineId, direction);
    if (opened != Acad::eOk) return opened;
    const Target target{firstPoint, targetAngle, leftOf(direction), spacing, adjustSpacing};
    return alignAt(objectId, target,
                   [&](bool& isAcross) { return findMeeting(objectId, baseLineId, isAcross); });
}

int alignObjectToGivenCircle(AcDbObjectId objectId, double targetAngle, double spacing, bool adjustSpacing,
                             const AcGePoint3d& alignPoint, const AcGePoint3d& centre, double radius) {
    const Target target{alignPoint, targetAngle, inPlane(alignPoint - centre).normal(), spacing,
                        adjustSpacing};
    return alignAt(objectId, target,
                   [&](bool& isAcross) { return findInside(objectId, centre, radius, isAcross); });
}

} // namespace qx::objectalign
