#include "objectalign/ConstructionEntities.h"

#include "dbobjptr.h"

namespace qx::objectalign {

AcDbObjectId ConstructionEntities::add(AcDbObjectId id) {
    if (!id.isNull()) ids_.append(id);
    return id;
}

void ConstructionEntities::erase() {
    for (const AcDbObjectId id : ids_) {
        const AcDbObjectPointer<AcDbEntity> entity{id, AcDb::kForWrite};
        if (entity.openStatus() == Acad::eOk) entity->erase();
    }
    ids_.setLogicalLength(0);
}

} // namespace qx::objectalign
