// Edge and centre alignment: an edge or the centre of a box travels along one axis onto a line through the
// base point. One table of moves serves single objects and groups. A positive offset always pushes inwards:
// to the right of the line for left edges, to the left for right edges, down for tops, up for bottoms.
#pragma once

#include "positionalign/ItemExtent.h"
#include "positionalign/PositionAlignSettings.h"

#include <span>

namespace qx::positionalign {

/// How one step of an action moves one box.
struct AlignmentMove {
    Axis axis;         ///< the only direction in the plane in which the box travels
    Corner reference;  ///< the corner or centre of the box that meets the base point
    double offsetSign; ///< +1: the offset pushes to larger coordinates, -1: to smaller, 0: it is not used
};

/// The moves of an action, in order: two for the centre, none for a distribution.
std::span<const AlignmentMove> movesOf(Action action);

/// Whether the action is one of the four that put an edge at a distance from the line.
bool takesOffset(Action action);

/// Moves an object whose box was read before. Its reference is also carried to the height of the base point.
/// The status is that of the opening or the transformation.
Acad::ErrorStatus alignObject(AcDbObjectId id, const AcDbExtents& box, const AlignmentMove& move,
                              const AcGePoint3d& base, double offset);

/// Moves every member of every group that the ids touch, each group by one translation within the plane. When
/// they touch none, says so at the command line.
void alignGroups(const AcDbObjectIdArray& ids, const AlignmentMove& move, const AcGePoint3d& base,
                 double offset);

} // namespace qx::positionalign
