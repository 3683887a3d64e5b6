#include "objectalign/footPoint.h"

#include "dbents.h"
#include "gept3dar.h"
#include "kernel/plane.h"
#include "objectalign/angles.h"

namespace qx::objectalign {

AcGePoint3d footPoint(const AcGePoint2d& point, double targetAngle, const AcDbEntity& baseLine) {
    AcGePoint2d across = point + kernel::unitAt(targetAngle);
    across.rotateBy(HALF_PI, point);
    const AcDbLine perpendicular{kernel::inSpace(across), kernel::inSpace(point)};
    AcGePoint3dArray points;
    perpendicular.intersectWith(&baseLine, AcDb::kExtendBoth, points);
    return points.isEmpty() ? AcGePoint3d::kOrigin : points.first();
}

} // namespace qx::objectalign
