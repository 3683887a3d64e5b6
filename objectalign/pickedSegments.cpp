#include "objectalign/pickedSegments.h"

#include "dbobjptr.h"
#include "geline2d.h"
#include "kernel/entityAccess.h"
#include "kernel/plane.h"
#include "kernel/polylineVertices.h"
#include "kernel/rotations.h"
#include "objectalign/angles.h"
#include "objectalign/baseLineDirection.h"
#include "objectalign/crossing.h"
#include "objectalign/footPoint.h"

#include <optional>

namespace qx::objectalign {
namespace {
using kernel::inPlane;
using kernel::inSpace;
using kernel::unitAt;

struct Picks {
    const AcDbObjectIdArray& entities;
    const AcGePoint2dArray& points;
};

/// The base line and what is to happen along it.
struct Base {
    double angle;
    AcGePoint2d point;
    AcGeVector2d along; ///< any length
    double spacing;
    bool adjustSpacing;

    AcGeVector2d left() const { return leftOf(along); }
    /// Positive to the left. Measured at a right angle to the last digit, unlike the turn that leftOf()
    /// makes.
    double distanceOf(const AcGePoint2d& from) const {
        return (from - point).dotProduct(along.normal().perpVector());
    }
};

// ---- the segment

struct Segment {
    AcGePoint3d start, end;
};

/// To the line that carries the segment, however far away the segment itself is; nothing for one without
/// length.
std::optional<double> distanceToCarrier(const Segment& segment, const AcGePoint2d& pick) {
    const AcGePoint2d start = inPlane(segment.start), end = inPlane(segment.end);
    if (start.isEqualTo(end)) return std::nullopt;
    const AcGeLine2d carrier{start, end};
    AcGeLine2d perpendicular;
    carrier.getPerpLine(pick, perpendicular);
    AcGePoint2d foot;
    if (!carrier.intersectWith(perpendicular, foot)) return std::nullopt;
    return foot.distanceTo(pick);
}

std::optional<Segment> segmentAt(const AcGePoint3dArray& vertices, const AcGePoint2d& pick) {
    std::optional<Segment> nearest;
    double shortest = 0;
    for (int i = 0; i < vertices.length(); ++i) {
        const Segment segment{vertices[i], vertices[i + 1 < vertices.length() ? i + 1 : 0]};
        const auto distance = distanceToCarrier(segment, pick);
        if (!distance || (nearest && *distance >= shortest)) continue;
        nearest = segment;
        shortest = *distance;
    }
    return nearest;
}

/// From the end nearer to the reference; when both are equally near, from the second one.
Segment ranked(const Segment& segment, const AcGePoint2d& reference) {
    const bool isInOrder =
        inPlane(segment.start).distanceTo(reference) < inPlane(segment.end).distanceTo(reference);
    return isInOrder ? segment : Segment{segment.end, segment.start};
}

// ---- one polyline

/// A polyline that was turned; without a middle it has no segment to align.
struct Turned {
    Acad::ErrorStatus status;
    std::optional<AcGePoint2d> middle = std::nullopt;
};

Turned turnSegment(AcDbObjectId id, const AcGePoint2d& pick, const Base& base) {
    AcDbObjectPointer<AcDbEntity> polyline{id};
    if (polyline.openStatus() != Acad::eOk) return {polyline.openStatus()};
    AcGePoint3dArray vertices;
    const auto status = kernel::readPolylineVertices(*polyline.object(), vertices);
    polyline.close();
    const auto found = segmentAt(vertices, pick);
    if (status != Acad::eOk || !found) return {status};

    const auto [start, end] = ranked(*found, base.point);
    const double edgeAngle = foldedEdgeAngle(inPlane(end - start).angle());
    const double turnAngle = turnedTheShortWay(base.angle - edgeAngle);
    AcGePoint2d middle = inPlane(start) + inPlane(end - start) / 2;
    middle.rotateBy(turnAngle, inPlane(start));
    return {kernel::rotateEntity(id, start, turnAngle), middle};
}

Acad::ErrorStatus moveTo(AcDbObjectId id, const AcGePoint2d& from, const AcGePoint2d& to) {
    return kernel::transformEntity(id, AcGeMatrix3d{}.setToTranslation(inSpace(to - from)));
}

template <class FindAcross>
Acad::ErrorStatus alignAtPoint(AcDbObjectId id, const AcGePoint2d& pick, const Base& base,
                               const FindAcross& findAcross) {
    const Turned turned = turnSegment(id, pick, base);
    if (turned.status != Acad::eOk || !turned.middle) return turned.status;
    const double distance = base.adjustSpacing ? base.spacing : base.distanceOf(*turned.middle);
    const AcGePoint2d goal = base.point + base.left() * distance;
    auto status = moveTo(id, *turned.middle, goal);
    const bool mayTurn = base.adjustSpacing && base.spacing != 0.0;
    bool isAcross = false;
    if (status == Acad::eOk && mayTurn) status = findAcross(id, isAcross);
    if (status != Acad::eOk || !isAcross) return status;
    return kernel::rotateEntity(id, inSpace(goal), PI);
}

template <class FindAcross>
int alignAllAtPoint(const Picks& picks, const Base& base, const FindAcross& findAcross) {
    for (int i = 0; i < picks.entities.length(); ++i) {
        const auto status = alignAtPoint(picks.entities[i], picks.points[i], base, findAcross);
        if (status != Acad::eOk) return status;
    }
    return Acad::eOk;
}

} // namespace

int alignPickedSegments(const AcDbObjectIdArray& pickedEntities, const AcGePoint2dArray& pickPoints,
                        double targetAngle, double spacing, bool adjustSpacing, const AcGePoint3d& alignPoint,
                        AcDbObjectId baseLineId) {
    AcGeVector2d direction = unitAt(targetAngle);
    const auto opened = readDirection(baseLineId, direction);
    if (opened != Acad::eOk) return opened;
    const Base base{targetAngle, inPlane(alignPoint), direction, spacing, adjustSpacing};
    return alignAllAtPoint({pickedEntities, pickPoints}, base, [&](AcDbObjectId id, bool& isAcross) {
        return findMeeting(id, baseLineId, isAcross);
    });
}

int alignPickedSegmentsToCircle(const AcDbObjectIdArray& pickedEntities, const AcGePoint2dArray& pickPoints,
                                double targetAngle, double spacing, bool adjustSpacing,
                                const AcGePoint3d& alignPoint, const AcGePoint3d& centre, double radius) {
    const Base base{targetAngle, inPlane(alignPoint), unitAt(targetAngle), spacing, adjustSpacing};
    return alignAllAtPoint({pickedEntities, pickPoints}, base, [&](AcDbObjectId id, bool& isAcross) {
        return findInside(id, centre, radius, isAcross);
    });
}

int alignPickedSegmentsToLine(const AcDbObjectIdArray& pickedEntities, const AcGePoint2dArray& pickPoints,
                              double targetAngle, double spacing, bool adjustSpacing,
                              const AcGePoint3d& alignPoint, const AcDbEntity& baseLine,
                              AcDbObjectIdArray& aligned, AcGePoint3dArray& landingPoints) {
    const Base base{targetAngle, inPlane(alignPoint), unitAt(targetAngle), spacing, adjustSpacing};
    for (int i = 0; i < pickedEntities.length(); ++i) {
        const AcDbObjectId id = pickedEntities[i];
        const Turned turned = turnSegment(id, pickPoints[i], base);
        if (turned.status != Acad::eOk) return turned.status;
        if (!turned.middle) continue;
        const AcGePoint3d landing = footPoint(*turned.middle, targetAngle, baseLine);
        const AcGePoint2d goal = inPlane(landing) + base.left() * spacing;
        const auto status = adjustSpacing ? moveTo(id, *turned.middle, goal) : Acad::eOk;
        if (status != Acad::eOk) return status;
        aligned.append(id);
        landingPoints.append(landing);
    }
    return Acad::eOk;
}

} // namespace qx::objectalign
