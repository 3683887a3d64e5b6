#include "objectalign/ArcTurn.h"

#include "kernel/plane.h"
#include "objectalign/angles.h"
#include "objectalign/intersections.h"

namespace qx::objectalign {
namespace {
using kernel::inPlane;
using kernel::inSpace;

AcGeVector2d chord(const AcDbArc& arc) {
    AcGePoint3d start, end;
    arc.getStartPoint(start);
    arc.getEndPoint(end);
    return inPlane(start - end);
}

Acad::ErrorStatus turn(AcDbArc& arc, double angle) {
    return arc.transformBy(AcGeMatrix3d{}.setToRotation(angle, AcGeVector3d{0, 0, 1}, arc.center()));
}

/// The line through the centre and the middle of the chord. A half circle has them in one place, hence the
/// chord's perpendicular rather than a line through the two points.
AcDbLine axisOf(const AcDbArc& arc, double z) {
    const AcGePoint3d centre{arc.center().x, arc.center().y, z};
    return AcDbLine{centre, centre + inSpace(chord(arc).perpVector().normal() * arc.radius())};
}

double distanceInPlane(const AcGePoint3d& a, const AcGePoint3d& b) {
    return inPlane(a).distanceTo(inPlane(b));
}
} // namespace

ArcTurn turnArc(AcDbArc& arc, double targetAngle, const AcDbEntity& baseLine) {
    ArcTurn result{turn(arc, targetAngle - chord(arc).angle()), false, {}, {}};
    if (result.status != Acad::eOk) return result;
    const auto foot = firstIntersection(axisOf(arc, 0), baseLine, AcDb::kExtendBoth);
    const auto apex = firstIntersection(axisOf(arc, arc.center().z), arc, AcDb::kExtendThis);
    if (!foot || !apex) return result;

    result = {Acad::eOk, true, *apex, *foot};
    if (distanceInPlane(*apex, *foot) <= distanceInPlane(arc.center(), *foot)) return result;
    result.status = turn(arc, PI);
    result.apex.rotateBy(PI, AcGeVector3d{0, 0, 1}, arc.center());
    return result;
}

} // namespace qx::objectalign
