#include "objectalign/alignToLine.h"

#include "dbobjptr.h"
#include "kernel/classTests.h"
#include "kernel/entityAccess.h"
#include "kernel/plane.h"
#include "kernel/rotations.h"
#include "objectalign/AlignmentEdge.h"
#include "objectalign/ArcTurn.h"
#include "objectalign/angles.h"
#include "objectalign/intersections.h"

namespace qx::objectalign {
namespace {
using kernel::inPlane;
using kernel::inSpace;
using kernel::unitAt;

/// The line to align to, and what of it the person chose.
struct Target {
    const AcDbEntity& baseLine;
    double angle;
    bool adjustSpacing;
};

// ---- arcs

Acad::ErrorStatus alignArc(AcDbObjectId id, const Target& target, double spacing, AcGePoint3d& landing) {
    const AcDbObjectPointer<AcDbArc> arc{id, AcDb::kForWrite};
    if (arc.openStatus() != Acad::eOk) return arc.openStatus();
    landing = arc->center();
    const ArcTurn turned = turnArc(*arc.object(), target.angle, target.baseLine);
    if (turned.status != Acad::eOk || !turned.hasApex) return turned.status;
    landing = turned.foot;
    if (!target.adjustSpacing) return Acad::eOk;

    // The hollow side is turned away from the line, and that is where the arc stands.
    const AcGeVector2d inward = inPlane(arc->center() - turned.apex).normal();
    const AcGePoint2d goal = inPlane(turned.foot) + inward * spacing;
    return arc->transformBy(AcGeMatrix3d::translation(inSpace(goal - inPlane(turned.apex))));
}

// ---- all others

/// Height of the letters; nothing for what is no text.
std::optional<double> textHeight(AcDbEntity& entity) {
    if (const auto* text = kernel::asText(&entity)) return text->height();
    if (const auto* text = kernel::asMText(&entity)) return text->textHeight();
    return std::nullopt;
}

/// How far text has to go on so that the line does not run through it; 0 for anything else. The status of the
/// opening; `further` stays when it failed.
Acad::ErrorStatus findClearance(AcDbObjectId id, const AcDbEntity& baseLine, double& further) {
    const AcDbObjectPointer<AcDbEntity> entity{id};
    if (entity.openStatus() != Acad::eOk) return entity.openStatus();
    const auto height = textHeight(*entity.object());
    if (height && firstIntersection(*entity.object(), baseLine, AcDb::kExtendBoth)) further = *height;
    return Acad::eOk;
}

Acad::ErrorStatus moveBeyond(AcDbObjectId id, const AcGePoint3d& basePoint, const AcGePoint3d& foot,
                             double spacing, const Target& target) {
    const AcGeVector2d toFoot = inPlane(foot - basePoint);
    const AcGeVector2d across = inPlane(foot).isEqualTo(inPlane(basePoint))
                                    ? unitAt(target.angle).rotateBy(HALF_PI)
                                    : toFoot.normal();
    auto status = kernel::moveEntity(id, inSpace(toFoot + across * spacing));
    if (status != Acad::eOk || spacing == 0.0) return status;
    double further = 0;
    status = findClearance(id, target.baseLine, further);
    return further != 0 ? kernel::moveEntity(id, inSpace(across * further)) : status;
}

Acad::ErrorStatus alignEdge(AcDbObjectId id, const AlignmentEdge& edge, double spacing, const Target& target,
                            AcGePoint3d& landing) {
    const AcGePoint3d& base = edge.basePoint;
    const AcGePoint3d foot = footPoint(inPlane(base), unitAt(target.angle), target.baseLine);
    landing = edge.isRound ? foot : AcGePoint3d{foot.x, foot.y, base.z};
    const auto status = kernel::rotateEntity(id, base, edge.turnTo(target.angle));
    if (status != Acad::eOk || !target.adjustSpacing) return status;
    return moveBeyond(id, base, foot, spacing + edge.extraSpacing, target);
}

} // namespace

int alignObjectToBaseLine(AcDbObjectId objectId, const AcGePoint2d& referencePoint, double targetAngle,
                          double spacing, bool adjustSpacing, const AcDbEntity& baseLine,
                          AcGePoint3d& landingPoint) {
    const Target target{baseLine, targetAngle, adjustSpacing};
    AlignmentEdge edge;
    const int found =
        readAlignmentEdge(objectId, {EdgeRequest::Purpose::line, inSpace(referencePoint), targetAngle}, edge);
    if (found != Acad::eOk) return found;
    return edge.isArc ? alignArc(objectId, target, spacing, landingPoint)
                      : alignEdge(objectId, edge, spacing, target, landingPoint);
}

} // namespace qx::objectalign
