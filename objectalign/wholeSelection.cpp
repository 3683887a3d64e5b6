#include "objectalign/wholeSelection.h"

#include "acutads.h"
#include "dbobjptr.h"
#include "kernel/classTests.h"
#include "kernel/entityAccess.h"
#include "kernel/groupLookup.h"
#include "kernel/midpoint.h"
#include "kernel/plane.h"
#include "kernel/rotations.h"
#include "objectalign/angles.h"
#include "objectalign/baseLineDirection.h"
#include "objectalign/intersections.h"

namespace qx::objectalign {
namespace {
using kernel::inPlane;
using kernel::inSpace;

/// From start to end of the base line. Nothing when there is none to be had, and `status` says why.
std::optional<AcGeVector2d> readBase(AcDbObjectId baseLine, Acad::ErrorStatus& status) {
    const AcDbObjectPointer<AcDbEntity> entity{baseLine};
    status = entity.openStatus();
    if (status != Acad::eOk) return std::nullopt;
    if (const auto* line = kernel::asLine(entity)) return inPlane(line->endPoint() - line->startPoint());
    acutPrintf(L"\n请选择基线为线段!");
    return std::nullopt;
}

double turnTo(double targetAngle, const AcGeVector2d& base) {
    return turnedTheShortWay(targetAngle - base.angle());
}

void translate(const AcDbObjectIdArray& ids, const AcGeVector2d& by) {
    kernel::moveEntities(kernel::rangeOf(ids), inSpace(by));
}

AcGeVector2d wayToBoundary(const AcGePoint2d& anchor, const AcGePoint3d& meeting, const AcGeVector2d& along,
                           double spacing) {
    if (meeting.isEqualTo(inSpace(anchor))) return leftOf(along) * spacing;
    const AcGeVector2d way = inPlane(meeting) - anchor;
    return way - way.normal() * spacing;
}

// ---- onto a point

/// The base line as it lies centred on a point, and what its turn does to that.
struct CentredBase {
    AcGePoint2d start, centre;
    double delta;

    CentredBase(const AcGeVector2d& base, const AcGePoint2d& baseCentre, double targetAngle)
        : start{baseCentre - base / 2}, centre{baseCentre}, delta{turnTo(targetAngle, base)} {}

    /// Turns the objects about the start and moves the centre to the target.
    void bring(const AcDbObjectIdArray& ids, const AcGePoint2d& target) const {
        kernel::rotateEntities(ids, inSpace(start), delta);
        translate(ids, target - AcGePoint2d{centre}.rotateBy(delta, start));
    }
};

/// The origin for anything that is no line.
Acad::ErrorStatus readMiddle(AcDbObjectId secondLine, AcGePoint3d& middle) {
    const AcDbObjectPointer<AcDbEntity> entity{secondLine};
    if (entity.openStatus() != Acad::eOk) return entity.openStatus();
    if (const auto* line = kernel::asLine(entity))
        middle = kernel::midpointXY(line->startPoint(), line->endPoint());
    return Acad::eOk;
}

} // namespace

AcDbObjectIdArray idsToMove(const AcDbObjectIdArray& selected, Moves moves) {
    if (moves == Moves::objects) return selected;
    AcDbObjectIdArray members;
    for (const AcDbObjectId group : kernel::groupsContaining(selected))
        members.append(kernel::groupMembers(group));
    return members;
}

Acad::ErrorStatus alignToBoundary(const AcDbObjectIdArray& ids, AcDbObjectId baseLine, double targetAngle,
                                  double spacing, bool moveToBoundary, const AcDbEntity& boundary,
                                  const AcGePoint2d& anchor, AcGePoint3d& reference) {
    Acad::ErrorStatus status = Acad::eOk;
    const auto base = readBase(baseLine, status);
    if (!base) return status;
    const double delta = turnTo(targetAngle, *base);
    const AcGeVector2d turned = AcGeVector2d{*base}.rotateBy(delta);
    const AcGeVector2d along = turned.isZeroLength() ? kernel::unitAt(delta) : turned;
    const AcGePoint3d meeting = footPoint(anchor, along, boundary);
    reference = meeting + inSpace(turned / 2);
    kernel::rotateEntities(ids, inSpace(anchor), delta);
    if (moveToBoundary) translate(ids, wayToBoundary(anchor, meeting, along, spacing));
    return Acad::eOk;
}

Acad::ErrorStatus alignOntoPoint(const AcDbObjectIdArray& ids, AcDbObjectId baseLine, double targetAngle,
                                 double spacing, bool useSpacing, const AcGePoint3d& target,
                                 const AcGePoint3d& directionPoint, AcDbObjectId secondLine,
                                 AcGePoint2d& baseCentre) {
    AcGePoint3d secondMiddle;
    Acad::ErrorStatus status = readMiddle(secondLine, secondMiddle);
    if (status != Acad::eOk) return status;
    const auto base = readBase(baseLine, status);
    if (!base) return status;
    const CentredBase centred{*base, baseCentre, targetAngle};
    baseCentre = centred.start;
    centred.bring(ids, inPlane(target));

    const AcGePoint3d& from = directionPoint.isEqualTo(target) ? secondMiddle : directionPoint;
    const AcGePoint2d turned = inPlane(from).rotateBy(HALF_PI, inPlane(target));
    const double distance = useSpacing ? spacing : inPlane(target).distanceTo(centred.centre);
    translate(ids, (inPlane(target) - turned).normal() * distance);
    return Acad::eOk;
}

Acad::ErrorStatus alignAwayFromPoint(const AcDbObjectIdArray& ids, AcDbObjectId baseLine, double targetAngle,
                                     double spacing, bool useSpacing, AcGePoint2d& baseCentre,
                                     const AcGePoint2d& target, const AcGePoint2d& reference) {
    Acad::ErrorStatus status = Acad::eOk;
    const auto base = readBase(baseLine, status);
    if (!base) return status;
    const CentredBase centred{*base, baseCentre, targetAngle};
    baseCentre = centred.start;
    centred.bring(ids, target);
    const double distance =
        useSpacing ? spacing : reference.distanceTo(centred.centre) - reference.distanceTo(target);
    translate(ids, (target - reference).normal() * distance);
    return Acad::eOk;
}

} // namespace qx::objectalign
