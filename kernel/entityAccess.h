// Measuring and moving entities by their ids. Each operation opens an entity, does one thing and closes it
// again; erased entities are never opened. Nothing is printed.
#pragma once

#include "dbidar.h"
#include "dbmain.h"

#include <span>

namespace qx::kernel {

/// The list as a range. It lives as long as the list is not changed.
inline std::span<const AcDbObjectId> rangeOf(const AcDbObjectIdArray& ids) {
    if (ids.isEmpty()) return {};
    return {&ids.first(), static_cast<std::size_t>(ids.length())};
}

/// Applies the matrix. The status of the opening when that fails, otherwise that of the transformation;
/// unless it is eOk the entity is unchanged.
Acad::ErrorStatus transformEntity(AcDbObjectId id, const AcGeMatrix3d& matrix);

/// Applies the matrix to every entity in list order; one that refuses does not keep the others from moving.
void transformEntities(std::span<const AcDbObjectId> ids, const AcGeMatrix3d& matrix);

/// Moves the entity, or every entity in list order, likewise.
Acad::ErrorStatus moveEntity(AcDbObjectId id, const AcGeVector3d& by);
void moveEntities(std::span<const AcDbObjectId> ids, const AcGeVector3d& by);

/// Opens the entity for reading and reads its box in world coordinates. An entity that draws nothing leaves
/// `extents` as it was. The status is that of the opening alone: a caller goes on with a box that holds
/// nothing.
Acad::ErrorStatus readExtents(AcDbObjectId id, AcDbExtents& extents);

} // namespace qx::kernel
