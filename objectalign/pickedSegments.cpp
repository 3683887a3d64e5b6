#include "objectalign/pickedSegments.h"

#include "dbobjptr.h"
#include "kernel/entityAccess.h"
#include "kernel/plane.h"
#include "kernel/polylineVertices.h"
#include "objectalign/AlignmentEdge.h"
#include "objectalign/angles.h"
#include "objectalign/baseLineDirection.h"
#include "objectalign/crossing.h"
#include "objectalign/intersections.h"
#include "objectalign/straightSegments.h"

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

/// Between neighbouring vertices, and from the last to the first one.
std::vector<AcGeLineSeg3d> segmentsBetween(const AcGePoint3dArray& vertices) {
    std::vector<AcGeLineSeg3d> segments;
    for (int i = 0; i < vertices.length(); ++i)
        segments.emplace_back(vertices[i], vertices[i + 1 < vertices.length() ? i + 1 : 0]);
    return segments;
}

// ---- one polyline

/// Without a middle when there is no segment to align.
Turned turnSegment(AcDbObjectId id, const AcGePoint2d& pick, const Base& base) {
    AcDbObjectPointer<AcDbEntity> polyline{id};
    if (polyline.openStatus() != Acad::eOk) return {polyline.openStatus()};
    AcGePoint3dArray vertices;
    const auto status = kernel::readPolylineVertices(*polyline.object(), vertices);
    polyline.close();
    const auto picked = nearestByCarrier(segmentsBetween(vertices), pick);
    if (status != Acad::eOk || !picked) return {status};
    AlignmentEdge edge = edgeBetween(picked->startPoint(), picked->endPoint(),
                                     {EdgeRequest::Purpose::line, inSpace(base.point), base.angle});
    edge.edgeAngle = foldedEdgeAngle(edge.edgeAngle);
    return turnByEdge(id, edge, base.angle);
}

int alignAtPoint(AcDbObjectId id, const AcGePoint2d& pick, const Base& base, const FindAcross& findAcross) {
    const Turned turned = turnSegment(id, pick, base);
    if (turned.status != Acad::eOk || !turned.middle) return turned.status;
    const double distance = base.adjustSpacing ? base.spacing : base.distanceOf(*turned.middle);
    const bool mayTurn = base.adjustSpacing && base.spacing != 0.0;
    return moveClearOf(mayTurn ? findAcross : nullptr, id, *turned.middle,
                       base.point + base.left() * distance);
}

int alignAllAtPoint(const Picks& picks, const Base& base, const FindAcross& findAcross) {
    for (int i = 0; i < picks.entities.length(); ++i) {
        const int status = alignAtPoint(picks.entities[i], picks.points[i], base, findAcross);
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
    return alignAllAtPoint({pickedEntities, pickPoints}, base, meeting(baseLineId));
}

int alignPickedSegmentsToCircle(const AcDbObjectIdArray& pickedEntities, const AcGePoint2dArray& pickPoints,
                                double targetAngle, double spacing, bool adjustSpacing,
                                const AcGePoint3d& alignPoint, const AcGePoint3d& centre, double radius) {
    const Base base{targetAngle, inPlane(alignPoint), unitAt(targetAngle), spacing, adjustSpacing};
    return alignAllAtPoint({pickedEntities, pickPoints}, base, reachingInside(centre, radius));
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
        const AcGePoint3d landing = footPoint(*turned.middle, unitAt(targetAngle), baseLine);
        const AcGePoint2d goal = inPlane(landing) + base.left() * spacing;
        const auto status =
            adjustSpacing ? kernel::moveEntity(id, inSpace(goal - *turned.middle)) : Acad::eOk;
        if (status != Acad::eOk) return status;
        aligned.append(id);
        landingPoints.append(landing);
    }
    return Acad::eOk;
}

} // namespace qx::objectalign
