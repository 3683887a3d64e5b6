// Turning entities about a point, always about the world's Z axis. Angles are radians, counter-clockwise.
// Each entity is opened, turned and closed before the next one is touched.
#pragma once

#include "dbidar.h"
#include "dbmain.h"
#include "gept3dar.h"

namespace qx::kernel {

/// The status of the opening when that fails, otherwise that of the transformation; unless it is eOk the
/// entity is unchanged.
Acad::ErrorStatus rotateEntity(AcDbObjectId id, const AcGePoint3d& base, double angle);

/// Turns every entity about the same point, in list order; ids that can't be opened are skipped.
void rotateEntities(const AcDbObjectIdArray& ids, const AcGePoint3d& base, double angle);

/// Turns the i-th entity about the i-th point; ids that can't be opened are skipped, and so is what one list
/// has more than the other.
void rotateEntitiesEach(const AcDbObjectIdArray& ids, const AcGePoint3dArray& bases, double angle);

} // namespace qx::kernel
