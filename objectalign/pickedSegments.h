// Polylines, each aligned by the segment at which it was picked: the segment, not the polyline's ends, comes
// to lie parallel to the base line.
//
// Of the segment's ends the one nearer to the reference is where the polyline is turned. The segment that
// counts is the one whose carrying line passes nearest to the pick, the first of equally near ones; the way
// from the last vertex back to the first is a segment too, of open polylines as well. A polyline without two
// different vertices is passed over. Every function stops at the first polyline that can't be opened or moved
// and answers its status, eOk otherwise; what was aligned before stays. Angles are radians, lengths drawing
// units, and z stays.
#pragma once

#include "dbidar.h"
#include "dbmain.h"
#include "gept2dar.h"
#include "gept3dar.h"

namespace qx::objectalign {

/// Puts the middle of each segment on the alignment point, and then to the left of the base line: by the
/// spacing when that is adjusted, otherwise as far as it was from the line. With a spacing other than 0 what
/// then touches the base line is turned by a half turn about the middle.
int alignPickedSegments(const AcDbObjectIdArray& pickedEntities, const AcGePoint2dArray& pickPoints,
                        double targetAngle, double spacing, bool adjustSpacing, const AcGePoint3d& alignPoint,
                        AcDbObjectId baseLineId);

/// The same at a point of a circle with the tangent as base line: to the left is outward, and turned is what
/// reaches inside the circle.
int alignPickedSegmentsToCircle(const AcDbObjectIdArray& pickedEntities, const AcGePoint2dArray& pickPoints,
                                double targetAngle, double spacing, bool adjustSpacing,
                                const AcGePoint3d& alignPoint, const AcGePoint3d& centre, double radius);

/// To a line, which is open, lies at z 0 and is taken as endless: with an adjusted spacing the middle of each
/// segment goes to the line and then to the left of the target direction by the spacing; otherwise the
/// polyline is turned and not moved. The reference is `alignPoint`. Adds the polylines that were aligned to
/// `aligned`, and for each where its middle comes down on the line to `landingPoints`.
int alignPickedSegmentsToLine(const AcDbObjectIdArray& pickedEntities, const AcGePoint2dArray& pickPoints,
                              double targetAngle, double spacing, bool adjustSpacing,
                              const AcGePoint3d& alignPoint, const AcDbEntity& baseLine,
                              AcDbObjectIdArray& aligned, AcGePoint3dArray& landingPoints);

} // namespace qx::objectalign
