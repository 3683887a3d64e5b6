// A whole selection, or all members of the groups it touches, turned and moved as one by a base line. The
// three ways to do it differ in where the last translation comes from.
//
// `ids` is what moves, in that order; an id that stands there twice moves twice. One that can't be opened is
// left out, the others still move. The base line must be a line: anything else is said at the command line,
// and nothing changes. It is turned onto the target angle, by less than a half turn from past a quarter turn
// on; see turnedTheShortWay(). Each function answers the status of the opening that failed before anything
// moved, eOk otherwise. Angles are radians, lengths drawing units; all is worked out in the XY plane, and z
// stays.
#pragma once

#include "dbidar.h"
#include "dbmain.h"
#include "gepnt2d.h"

namespace qx::objectalign {

/// What an alignment as a whole moves: the objects themselves, or every member of every group that holds one
/// of them, in the order of the group dictionary.
enum class Moves { objects, groups };
AcDbObjectIdArray idsToMove(const AcDbObjectIdArray& selected, Moves moves);

/// About the anchor, and with `moveToBoundary` so that the anchor comes to stand short of the boundary by the
/// spacing, on the perpendicular through it; an anchor on the boundary goes to the left of the target
/// direction. A boundary that the perpendicular misses counts as the origin. The boundary is open.
/// `reference` gets the place on the boundary, shifted by half of the turned base line.
Acad::ErrorStatus alignToBoundary(const AcDbObjectIdArray& ids, AcDbObjectId baseLine, double targetAngle,
                                  double spacing, bool moveToBoundary, const AcDbEntity& boundary,
                                  const AcGePoint2d& anchor, AcGePoint3d& reference);

/// About the start of the base line as it lies centred on `baseCentre`, which becomes that start; then the
/// centre goes to the target, and from there away from `directionPoint` turned by a quarter turn about the
/// target: as far as it had been from the target, or by the spacing. When `directionPoint` is the target, the
/// middle of the second line takes its place (the origin when that is no line).
Acad::ErrorStatus alignOntoPoint(const AcDbObjectIdArray& ids, AcDbObjectId baseLine, double targetAngle,
                                 double spacing, bool useSpacing, const AcGePoint3d& target,
                                 const AcGePoint3d& directionPoint, AcDbObjectId secondLine,
                                 AcGePoint2d& baseCentre);

/// The same, but the last way runs straight away from `reference` through the target: by the spacing, or as
/// far as the centre had been from the reference more than the target is.
Acad::ErrorStatus alignAwayFromPoint(const AcDbObjectIdArray& ids, AcDbObjectId baseLine, double targetAngle,
                                     double spacing, bool useSpacing, AcGePoint2d& baseCentre,
                                     const AcGePoint2d& target, const AcGePoint2d& reference);

} // namespace qx::objectalign
