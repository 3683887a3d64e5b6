#include "objectalign/alignmentPointChoice.h"

#include "acutads.h"
#include "adslib.h"
#include "dbobjptr.h"
#include "geassign.h"
#include "kernel/classTests.h"
#include "kernel/plane.h"
#include "objectalign/EntityPick.h"
#include "objectalign/curvePicks.h"
#include "objectalign/tangent.h"

namespace qx::objectalign {
namespace {
using kernel::inSpace;

enum class CurveClass { circular, line, polyline, olderPolyline, other };

CurveClass classOf(AcDbEntity& entity) {
    if (kernel::asCircle(&entity) || kernel::asArc(&entity)) return CurveClass::circular;
    if (kernel::asLine(&entity)) return CurveClass::line;
    if (kernel::asPolyline(&entity)) return CurveClass::polyline;
    if (kernel::asPolyline2d(&entity) || kernel::asPolyline3d(&entity)) return CurveClass::olderPolyline;
    return CurveClass::other;
}

std::optional<AlignmentPoint> onLine(AcDbObjectId lineId, AcGePoint2d point) {
    AcGePoint3d first, second;
    double angle = 0;
    if (lineDirectionAt(lineId, point, first, second, angle) != Acad::eOk) return std::nullopt;
    return AlignmentPoint{
        .curve = AlignmentPoint::Curve::straight, .curveId = lineId, .point = inSpace(point), .angle = angle};
}

std::optional<AlignmentPoint> onCircle(AcDbObjectId curveId, const AcGePoint2d& point,
                                       ConstructionEntities& construction) {
    const Tangent tangent = tangentAt(curveId, point);
    if (tangent.curve.isNull()) {
        acutPrintf(L"\n该点不是切点");
        return std::nullopt;
    }
    construction.add(tangent.line);
    return AlignmentPoint{.curve = AlignmentPoint::Curve::circular,
                          .curveId = curveId,
                          .point = tangent.lineStart,
                          .angle = tangent.angle,
                          .centre = tangent.centre,
                          .radius = tangent.radius};
}

std::optional<AlignmentPoint> onSegment(const SegmentStandIn& segment, const AcGePoint2d& point,
                                        ConstructionEntities& construction) {
    if (construction.add(segment.id).isNull()) return std::nullopt;
    return segment.isStraight ? onLine(segment.id, point) : onCircle(segment.id, point, construction);
}

std::optional<AlignmentPoint> onCurve(AcDbObjectId curveId, const AcGePoint2d& point,
                                      ConstructionEntities& construction) {
    AcDbObjectPointer<AcDbEntity> entity{curveId};
    if (entity.openStatus() != Acad::eOk) {
        acutPrintf(L"\n请选择对齐点所在的直线、圆、圆弧或多段线");
        return std::nullopt;
    }
    const CurveClass curve = classOf(*entity.object());
    entity.close();
    switch (curve) {
    case CurveClass::circular:
        return onCircle(curveId, point, construction);
    case CurveClass::line:
        return onLine(curveId, point);
    case CurveClass::polyline:
        return onSegment(polylineSegmentAt(curveId, point), point, construction);
    case CurveClass::olderPolyline:
        return onSegment(polyline2dSegmentAt(curveId, point), point, construction);
    case CurveClass::other:
        break;
    }
    acutPrintf(L"\n请选择对齐点所在的直线、圆、圆弧或多段线!");
    return std::nullopt;
}

/// Asks until the point lies on the curve. A point that comes with the result 0 is taken as it is.
std::optional<AcGePoint2d> askPointOn(AcDbObjectId curveId) {
    for (;;) {
        ads_point point{};
        const int result = acedGetPoint(nullptr, L"请选择对齐点:", point);
        if (result != RTNORM && result != 0) return std::nullopt;
        if (result == 0 || isPointOnCurve(curveId, asPnt2d(point))) return asPnt2d(point);
        acutPrintf(L"\n请选择对象上的对齐点!");
    }
}
} // namespace

std::optional<AlignmentPoint> chooseAlignmentPoint(ConstructionEntities& construction) {
    const EntityPick curve = pickEntity(L"请选择对齐点所在的直线、圆、圆弧或多段线:");
    if (curve.result != RTNORM) return std::nullopt;
    const auto point = askPointOn(curve.id);
    if (!point) return std::nullopt;
    return onCurve(curve.id, *point, construction);
}

} // namespace qx::objectalign
