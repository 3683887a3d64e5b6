#include "objectalign/baseLineDirection.h"

#include "dbobjptr.h"
#include "kernel/classTests.h"
#include "kernel/plane.h"
#include "objectalign/angles.h"

namespace qx::objectalign {

Acad::ErrorStatus readDirection(AcDbObjectId baseLineId, AcGeVector2d& direction) {
    const AcDbObjectPointer<AcDbEntity> entity{baseLineId};
    if (entity.openStatus() != Acad::eOk) return entity.openStatus();
    const auto* line = kernel::asLine(entity);
    if (!line) return Acad::eOk;
    const AcGeVector2d along = kernel::inPlane(line->endPoint() - line->startPoint());
    if (!along.isZeroLength()) direction = along;
    return Acad::eOk;
}

AcGeVector2d leftOf(const AcGeVector2d& direction) {
    const AcGeVector2d along = direction.isZeroLength() ? AcGeVector2d::kXAxis : direction.normal();
    return AcGeVector2d{along}.rotateBy(HALF_PI);
}

} // namespace qx::objectalign
