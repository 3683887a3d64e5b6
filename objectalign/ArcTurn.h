// How an arc is aligned: by its chord, and by the apex of its bow. The convex side comes to face the line.
#pragma once

#include "dbents.h"

namespace qx::objectalign {

struct ArcTurn {
    Acad::ErrorStatus status; ///< of the turn; unless it is eOk the arc may have been turned in part
    bool hasApex;             ///< otherwise the points mean nothing, and the arc was turned only
    AcGePoint3d apex;         ///< middle of the arc as it now stands
    AcGePoint3d foot;         ///< where the arc's axis meets the base line, z 0
};

/// Turns the arc, which is open for writing, about its centre so that its chord gets the angle and its convex
/// side faces the base line. There is no apex when the base line runs along the axis, or when the arc does
/// not lie parallel to the XY plane.
ArcTurn turnArc(AcDbArc& arc, double targetAngle, const AcDbEntity& baseLine);

} // namespace qx::objectalign
