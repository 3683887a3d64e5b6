// The base line by which a selection is turned as a whole, asked for at the command line.
#pragma once

#include "objectalign/ConstructionEntities.h"

namespace qx::objectalign {

/// A line that was picked; for a lightweight or 2D polyline a new line in the place of its straight segment
/// whose carrying line passes nearest to the pick; after Enter a new red line between two points. Null when
/// the person gives none, or when the line can't be drawn.
AcDbObjectId chooseBaseline(ConstructionEntities& construction);

} // namespace qx::objectalign
