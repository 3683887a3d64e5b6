#include "objectalign/intersections.h"

#include "dbents.h"
#include "geline2d.h"
#include "gept3dar.h"
#include "kernel/plane.h"
#include "objectalign/angles.h"

namespace qx::objectalign {

std::optional<AcGePoint3d> firstIntersection(const AcDbEntity& entity, const AcDbEntity& with,
                                             AcDb::Intersect extension) {
    AcGePoint3dArray points;
    entity.intersectWith(&with, extension, points);
    return points.isEmpty() ? std::nullopt : std::optional{points.first()};
}

AcGePoint3d footPoint(const AcGePoint2d& point, const AcGeVector2d& along, const AcDbEntity& baseLine) {
    const AcGePoint2d across = point + AcGeVector2d{along}.rotateBy(HALF_PI);
    const AcDbLine perpendicular{kernel::inSpace(across), kernel::inSpace(point)};
    return firstIntersection(perpendicular, baseLine, AcDb::kExtendBoth).value_or(AcGePoint3d::kOrigin);
}

std::optional<AcGePoint2d> footOnCarrier(const AcGePoint2d& start, const AcGePoint2d& end,
                                         const AcGePoint2d& point) {
    const AcGeLine2d carrier{start, end};
    AcGeLine2d perpendicular;
    carrier.getPerpLine(point, perpendicular);
    AcGePoint2d foot;
    return carrier.intersectWith(perpendicular, foot) ? std::optional{foot} : std::nullopt;
}

} // namespace qx::objectalign
