#include "objectalign/crossing.h"

#include "dbents.h"
#include "dbobjptr.h"
#include "gept3dar.h"
#include "kernel/plane.h"

#include <cmath>

namespace qx::objectalign {
namespace {
using kernel::inPlane;

bool meets(const AcDbEntity& entity, const AcDbEntity& other) {
    AcGePoint3dArray points;
    entity.intersectWith(&other, AcDb::kOnBothOperands, points);
    return !points.isEmpty();
}

/// All corners of its box inside means all of it inside.
bool liesInside(const AcDbEntity& entity, const AcGePoint3d& centre, double radius) {
    AcDbExtents box;
    if (entity.getGeomExtents(box) != Acad::eOk) return false;
    const AcGeVector2d low = inPlane(box.minPoint() - centre), high = inPlane(box.maxPoint() - centre);
    return std::hypot(std::max(std::abs(low.x), std::abs(high.x)),
                      std::max(std::abs(low.y), std::abs(high.y))) < radius;
}
} // namespace

Acad::ErrorStatus findMeeting(AcDbObjectId id, AcDbObjectId curveId, bool& isAcross) {
    const AcDbObjectPointer<AcDbEntity> entity{id}, curve{curveId};
    if (entity.openStatus() != Acad::eOk) return entity.openStatus();
    if (curve.openStatus() == Acad::eOk) isAcross = meets(*entity.object(), *curve.object());
    return curve.openStatus();
}

Acad::ErrorStatus findInside(AcDbObjectId id, const AcGePoint3d& centre, double radius, bool& isAcross) {
    constexpr double touching = 1e-6; // of the radius
    const AcDbObjectPointer<AcDbEntity> entity{id};
    if (entity.openStatus() != Acad::eOk) return entity.openStatus();
    const double inner = radius * (1 - touching);
    const AcDbCircle inside{{centre.x, centre.y, 0}, AcGeVector3d::kZAxis, inner};
    isAcross = meets(*entity.object(), inside) || liesInside(*entity.object(), centre, inner);
    return Acad::eOk;
}

} // namespace qx::objectalign
