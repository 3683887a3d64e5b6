#include "objectalign/footPoint.h"

#include "dbents.h"
#include "gept3dar.h"
#include "kernel/plane.h"
#include "objectalign/angles.h"

#include <algorithm>

namespace qx::objectalign {

// The perpendicular is drawn as long as the line is far, which keeps the digits of the foot.
AcGePoint3d footPoint(const AcGePoint2d& point, double targetAngle, const AcDbEntity& baseLine,
                      const AcGePoint2d& reference) {
    const double length = std::max(1.0, point.distanceTo(reference));
    AcGePoint2d across = point + kernel::unitAt(targetAngle) * length;
    across.rotateBy(HALF_PI, point);
    const AcDbLine perpendicular{kernel::inSpace(across), kernel::inSpace(point)};
    AcGePoint3dArray points;
    perpendicular.intersectWith(&baseLine, AcDb::kExtendBoth, points);
    return points.isEmpty() ? AcGePoint3d::kOrigin : points.first();
}

} // namespace qx::objectalign
