// The line that things are aligned to, from what the person picked.
#pragma once

#include "gepnt2d.h"
#include "objectalign/ConstructionEntities.h"

#include <optional>

namespace qx::objectalign {

struct AlignmentLine {
    AcDbObjectId id; ///< a line at z 0
    double angle;    ///< of the direction that points up, or to the right when level: radians, 0 to pi
    AcGePoint2d pick;
};

/// A line itself, or the straight segment of a lightweight or 2D polyline that is nearest to the pick. A
/// segment, and a line that does not lie at z 0, is stood in for by a new line there. Anything else is
/// refused at the command line.
std::optional<AlignmentLine> analyseAlignmentLine(AcDbObjectId picked, const AcGePoint2d& pick,
                                                  ConstructionEntities& construction);

} // namespace qx::objectalign
