#include "objectalign/crossing.h"

#include "dbents.h"
#include "dbobjptr.h"
#include "gept3dar.h"
#include "kernel/entityAccess.h"
#include "kernel/plane.h"
#include "kernel/rotations.h"
#include "objectalign/angles.h"
#include "objectalign/intersections.h"

#include <algorithm>
#include <cmath>

namespace qx::objectalign {
namespace {
using kernel::inPlane;
using kernel::inSpace;

bool meets(const AcDbEntity& entity, const AcDbEntity& other) {
    return firstIntersection(entity, other, AcDb::kOnBothOperands).has_value();
}

/// A circle inside which things certainly lie inside the other one: what meets a curve to within the
/// precision of the coordinates only touches it.
double innerRadius(const AcGePoint2d& centre, double radius) {
    constexpr double touching = 1e-6, precision = 4e-9; // of the radius, of the coordinates
    const double size = std::max(std::abs(centre.x), std::abs(centre.y)) + radius;
    return radius - std::max(radius * touching, size * precision);
}

/// Whether the object has a point inside the circle on a line that cuts its box in half. What hangs together
/// and does not meet the circle lies inside or outside as a whole, and reaches from one side of its box to
/// the other.
bool hasPointInside(const AcDbEntity& entity, const AcDbExtents& box, const AcGePoint2d& centre,
                    double radius) {
    const AcGePoint3d middle = box.minPoint() + (box.maxPoint() - box.minPoint()) / 2;
    AcGePoint3dArray points;
    for (const AcGeVector3d& along : {AcGeVector3d::kXAxis, AcGeVector3d::kYAxis}) {
        const AcDbLine cut{middle, middle + along};
        entity.intersectWith(&cut, AcDb::kExtendArg, points);
    }
    return std::any_of(points.begin(), points.end(),
                       [&](const AcGePoint3d& each) { return inPlane(each).distanceTo(centre) < radius; });
}

/// At the height of the object, so that one that lies off the plane is seen like any other.
bool reachesInside(const AcDbEntity& entity, const AcGePoint2d& centre, double radius) {
    AcDbExtents box;
    if (!(radius > 0) || entity.getGeomExtents(box) != Acad::eOk) return false;
    const AcDbCircle inside{{centre.x, centre.y, box.minPoint().z}, AcGeVector3d::kZAxis, radius};
    return meets(entity, inside) || hasPointInside(entity, box, centre, radius);
}
} // namespace

FindAcross meeting(AcDbObjectId curveId) {
    return [curveId](AcDbObjectId id, bool& isAcross) {
        const AcDbObjectPointer<AcDbEntity> entity{id}, curve{curveId};
        if (entity.openStatus() != Acad::eOk) return entity.openStatus();
        if (curve.openStatus() == Acad::eOk) isAcross = meets(*entity.object(), *curve.object());
        return curve.openStatus();
    };
}

FindAcross reachingInside(const AcGePoint3d& centre, double radius) {
    return [flat = inPlane(centre), radius](AcDbObjectId id, bool& isAcross) {
        const AcDbObjectPointer<AcDbEntity> entity{id};
        if (entity.openStatus() == Acad::eOk)
            isAcross = reachesInside(*entity.object(), flat, innerRadius(flat, radius));
        return entity.openStatus();
    };
}

Acad::ErrorStatus moveClearOf(const FindAcross& findAcross, AcDbObjectId id, const AcGePoint2d& from,
                              const AcGePoint2d& to) {
    auto status = kernel::moveEntity(id, inSpace(to - from));
    bool isAcross = false;
    if (status == Acad::eOk && findAcross) status = findAcross(id, isAcross);
    if (status != Acad::eOk || !isAcross) return status;
    return kernel::rotateEntity(id, inSpace(to), PI);
}

} // namespace qx::objectalign
