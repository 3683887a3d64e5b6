// Which way a base line runs, and to which side of it a spacing goes.
#pragma once

#include "dbid.h"
#include "gevec2d.h"

namespace qx::objectalign {

/// From start to end of a line, in the XY plane; `direction` keeps its value for anything else and for a line
/// without length. The status of the opening.
Acad::ErrorStatus readDirection(AcDbObjectId baseLineId, AcGeVector2d& direction);

/// The unit vector to the left, by the quarter turn of the alignments. Without a direction, to the left of
/// the x axis.
AcGeVector2d leftOf(const AcGeVector2d& direction);

} // namespace qx::objectalign
