// Where things meet, and where something comes down on a line.
#pragma once

#include "dbmain.h"
#include "gepnt2d.h"

#include <optional>

namespace qx::objectalign {

/// The first in the order of `entity`; both are open.
std::optional<AcGePoint3d> firstIntersection(const AcDbEntity& entity, const AcDbEntity& with,
                                             AcDb::Intersect extension);

/// Where the perpendicular of the direction through the point, by the quarter turn of the alignments, meets
/// the base line, which is open, lies at z 0 and is taken as endless; the origin when it does not.
AcGePoint3d footPoint(const AcGePoint2d& point, const AcGeVector2d& along, const AcDbEntity& baseLine);

/// The foot of the perpendicular on the endless line through both ends; nothing when they are one.
std::optional<AcGePoint2d> footOnCarrier(const AcGePoint2d& start, const AcGePoint2d& end,
                                         const AcGePoint2d& point);

} // namespace qx::objectalign
