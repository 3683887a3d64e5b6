#include "kernel/rotations.h"

#include "kernel/entityAccess.h"

#include <algorithm>

namespace qx::kernel {
namespace {
AcGeMatrix3d rotationAbout(const AcGePoint3d& base, double angle) {
    return AcGeMatrix3d{}.setToRotation(angle, AcGeVector3d{0, 0, 1}, base);
}
} // namespace

Acad::ErrorStatus rotateEntity(AcDbObjectId id, const AcGePoint3d& base, double angle) {
    return transformEntity(id, rotationAbout(base, angle));
}

void rotateEntities(const AcDbObjectIdArray& ids, const AcGePoint3d& base, double angle) {
    transformEntities(rangeOf(ids), rotationAbout(base, angle));
}

void rotateEntitiesEach(const AcDbObjectIdArray& ids, const AcGePoint3dArray& bases, double angle) {
    const int count = std::min(ids.length(), bases.length());
    for (int i = 0; i < count; ++i) rotateEntity(ids[i], bases[i], angle);
}

} // namespace qx::kernel
