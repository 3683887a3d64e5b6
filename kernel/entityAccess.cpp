#include "kernel/entityAccess.h"

#include "dbobjptr.h"

namespace qx::kernel {

Acad::ErrorStatus transformEntity(AcDbObjectId id, const AcGeMatrix3d& matrix) {
    AcDbObjectPointer<AcDbEntity> entity{id, AcDb::kForWrite};
    if (entity.openStatus() != Acad::eOk) return entity.openStatus();
    return entity->transformBy(matrix);
}

void transformEntities(std::span<const AcDbObjectId> ids, const AcGeMatrix3d& matrix) {
    for (const AcDbObjectId id : ids) transformEntity(id, matrix);
}

Acad::ErrorStatus moveEntity(AcDbObjectId id, const AcGeVector3d& by) {
    return transformEntity(id, AcGeMatrix3d::translation(by));
}

void moveEntities(std::span<const AcDbObjectId> ids, const AcGeVector3d& by) {
    transformEntities(ids, AcGeMatrix3d::translation(by));
}

Acad::ErrorStatus readExtents(AcDbObjectId id, AcDbExtents& extents) {
    const AcDbObjectPointer<AcDbEntity> entity{id, AcDb::kForRead};
    if (entity.openStatus() == Acad::eOk) entity->getGeomExtents(extents);
    return entity.openStatus();
}

} // namespace qx::kernel
