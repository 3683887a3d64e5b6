#include "objectalign/curvePicks.h"

#include "acutads.h"
#include "dbobjptr.h"
#include "gearc3d.h"
#include "gelnsg3d.h"
#include "gept3dar.h"
#include "kernel/classTests.h"
#include "kernel/construction.h"
#include "kernel/lightCopy.h"
#include "kernel/plane.h"
#include "objectalign/intersections.h"

#include <algorithm>
#include <optional>
#include <variant>

namespace qx::objectalign {
namespace {
using kernel::inPlane;
using kernel::inSpace;
using kernel::onGround;

AcGeTol pickTolerance() {
    AcGeTol tolerance = AcGeContext::gTol;
    tolerance.setEqualPoint(3.0);
    return tolerance;
}

AcGeLineSeg3d flatSegment(const AcGePoint3d& start, const AcGePoint3d& end) {
    return {onGround(start), onGround(end)};
}

// ---- segments of polylines

using Segment = std::variant<AcGeLineSeg3d, AcGeCircArc3d>;

std::optional<Segment> straightUnder(const AcDbPolyline& polyline, unsigned index, const AcGePoint2d& point) {
    AcGeLineSeg3d segment;
    polyline.getLineSegAt(index, segment);
    const AcGeLineSeg3d flat = flatSegment(segment.startPoint(), segment.endPoint());
    return flat.isOn(inSpace(point), pickTolerance()) ? std::optional<Segment>{flat} : std::nullopt;
}

/// At the arc's own height, where it stays what it is as long as the polyline is not tilted.
std::optional<Segment> arcUnder(const AcDbPolyline& polyline, unsigned index, const AcGePoint2d& point) {
    AcGeCircArc3d arc;
    polyline.getArcSegAt(index, arc);
    const AcGePoint3d atItsHeight{point.x, point.y, arc.center().z};
    return arc.isOn(atItsHeight, pickTolerance()) ? std::optional<Segment>{arc} : std::nullopt;
}

std::optional<Segment> segmentUnder(const AcDbPolyline& polyline, const AcGePoint2d& point) {
    for (unsigned i = 0; i < polyline.numVerts(); ++i) {
        const auto type = polyline.segType(i);
        std::optional<Segment> found;
        if (type == AcDbPolyline::kArc) found = arcUnder(polyline, i, point);
        if (type == AcDbPolyline::kLine) found = straightUnder(polyline, i, point);
        if (found) return found;
    }
    return std::nullopt;
}

SegmentStandIn standIn(const std::optional<Segment>& segment) {
    if (!segment) return {};
    if (const auto* straight = std::get_if<AcGeLineSeg3d>(&*segment))
        return {kernel::makeLine(straight->startPoint(), straight->endPoint(), 0), true};
    const auto& arc = std::get<AcGeCircArc3d>(*segment);
    return {kernel::makeCircle(onGround(arc.center()), arc.radius()), false};
}

// ---- whole curves

bool isOnCircle(const AcDbCircle& circle, const AcGePoint2d& point) {
    const AcGeCircArc3d ring{onGround(circle.center()), AcGeVector3d::kZAxis, circle.radius()};
    return ring.isOn(inSpace(point), pickTolerance());
}

bool isOnArc(const AcDbArc& arc, const AcGePoint2d& point) {
    const AcGePoint3d centre = arc.center(), atItsHeight{point.x, point.y, centre.z};
    const AcDbLine ray{centre, atItsHeight};
    AcGePoint3dArray points;
    ray.intersectWith(&arc, AcDb::kExtendThis, points);
    return std::any_of(points.begin(), points.end(),
                       [&](const AcGePoint3d& each) { return each.isEqualTo(atItsHeight, pickTolerance()); });
}

bool isOn(AcDbEntity& curve, const AcGePoint2d& point) {
    if (const auto* polyline = kernel::asPolyline(&curve)) return segmentUnder(*polyline, point).has_value();
    if (auto* polyline = kernel::asPolyline2d(&curve)) {
        const auto copy = kernel::lightCopy(*polyline);
        return copy && segmentUnder(*copy, point);
    }
    if (const auto* line = kernel::asLine(&curve))
        return flatSegment(line->startPoint(), line->endPoint()).isOn(inSpace(point), pickTolerance());
    if (const auto* circle = kernel::asCircle(&curve)) return isOnCircle(*circle, point);
    if (const auto* arc = kernel::asArc(&curve)) return isOnArc(*arc, point);
    return false;
}
} // namespace

bool isPointOnCurve(AcDbObjectId curveId, const AcGePoint2d& point) {
    const AcDbObjectPointer<AcDbEntity> curve{curveId};
    return curve.openStatus() == Acad::eOk && isOn(*curve.object(), point);
}

// The polyline is closed before its stand-in is drawn.
SegmentStandIn polylineSegmentAt(AcDbObjectId polylineId, const AcGePoint2d& point) {
    std::optional<Segment> segment;
    if (const AcDbObjectPointer<AcDbPolyline> polyline{polylineId}; polyline.openStatus() == Acad::eOk)
        segment = segmentUnder(*polyline.object(), point);
    return standIn(segment);
}

SegmentStandIn polyline2dSegmentAt(AcDbObjectId polylineId, const AcGePoint2d& point) {
    std::optional<Segment> segment;
    if (const AcDbObjectPointer<AcDb2dPolyline> polyline{polylineId}; polyline.openStatus() == Acad::eOk)
        if (const auto copy = kernel::lightCopy(*polyline.object())) segment = segmentUnder(*copy, point);
    return standIn(segment);
}

Acad::ErrorStatus lineDirectionAt(AcDbObjectId lineId, AcGePoint2d& point, AcGePoint3d& first,
                                  AcGePoint3d& second, double& angle) {
    const AcDbObjectPointer<AcDbEntity> entity{lineId};
    if (entity.openStatus() != Acad::eOk) return entity.openStatus();
    const auto* line = kernel::asLine(entity);
    if (!line) {
        acutPrintf(L"\n请选择线段对象");
        return entity.openStatus();
    }
    const AcGePoint3d start = line->startPoint(), end = line->endPoint();
    const bool isInOrder = end.x > start.x || (end.x == start.x && start.y > end.y);
    first = isInOrder ? start : end;
    second = isInOrder ? end : start;
    angle = inPlane(end - start).angle();
    point = footOnCarrier(inPlane(start), inPlane(end), point).value_or(inPlane(start));
    return Acad::eOk;
}

} // namespace qx::objectalign
