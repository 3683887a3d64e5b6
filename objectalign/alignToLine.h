// One object at a time, turned onto the direction of a base line and, if wanted, moved there.
#pragma once

#include "dbmain.h"
#include "gepnt2d.h"

namespace qx::objectalign {

/// Turns the object so that its alignment edge gets the target angle (radians). With `adjustSpacing` it is
/// then moved across the base line until its base point stands `spacing` drawing units (for a circle or
/// ellipse: and the radius across) beyond it, text that still touches the line one text height further. An
/// arc stands short of the line, its apex at the spacing. Distances are measured in the XY plane, z stays.
///
/// `baseLine` is open and lies at z 0; it is taken as endless. `referencePoint` decides between the object's
/// ends. `landingPoint` is where the object comes down on the base line, also when it was not moved; the
/// origin counts for an object whose perpendicular misses the line.
///
/// Answers eOk, the status of an opening or transformation that was refused (nothing more has happened then),
/// or notHandled.
int alignObjectToBaseLine(AcDbObjectId objectId, const AcGePoint2d& referencePoint, double targetAngle,
                          double spacing, bool adjustSpacing, const AcDbEntity& baseLine,
                          AcGePoint3d& landingPoint);

} // namespace qx::objectalign
