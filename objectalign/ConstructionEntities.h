// The entities that a command draws to measure against. They are gone when it ends, however it ends.
#pragma once

#include "dbidar.h"

namespace qx::objectalign {

class ConstructionEntities {
public:
    ConstructionEntities() = default;
    /// Erases what is left.
    ~ConstructionEntities() { erase(); }
    ConstructionEntities(const ConstructionEntities&) = delete;
    ConstructionEntities& operator=(const ConstructionEntities&) = delete;

    /// Takes over the entity, and gives its id back. A null id is nothing to erase.
    AcDbObjectId add(AcDbObjectId id);
    /// In the order in which they were drawn. One that can't be opened for writing stays in the drawing: such
    /// entities are drawn on the current layer, and that may be locked.
    void erase();

private:
    AcDbObjectIdArray ids_;
};

} // namespace qx::objectalign
