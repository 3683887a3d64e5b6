#include "objectalign/alignSelection.h"

#include "dbobjptr.h"
#include "kernel/plane.h"
#include "kernel/rotations.h"
#include "objectalign/AlignmentEdge.h"
#include "objectalign/alignAtPoint.h"
#include "objectalign/alignToLine.h"
#include "objectalign/angles.h"
#include "objectalign/pickedSegments.h"

namespace qx::objectalign {
namespace {
using kernel::inPlane;
using kernel::inSpace;
using kernel::unitAt;
using Settings = ObjectAlignSettings;

bool isStraight(const AlignmentPoint& at) { return at.curve == AlignmentPoint::Curve::straight; }

AcGeVector3d directionOf(const AlignmentPoint& at) { return inSpace(unitAt(at.angle)); }

// ---- as a whole

Aligned align(const WholeSelection& selection, const AlignmentLine& line, const Settings& settings) {
    const AcDbObjectIdArray moved = idsToMove(selection.ids, selection.moves);
    AcGePoint3d pivot;
    const AcDbObjectPointer<AcDbEntity> boundary{line.id};
    if (boundary.openStatus() == Acad::eOk)
        alignToBoundary(moved, selection.baseLine, line.angle, settings.spacing, settings.adjustSpacing,
                        *boundary.object(), selection.basePoint, pivot);
    return {moved, pivot};
}

// The direction point lies behind the alignment point, so that the way goes to the left of the line.
Aligned align(const WholeSelection& selection, const AlignmentPoint& at, const Settings& settings) {
    const AcDbObjectIdArray moved = idsToMove(selection.ids, selection.moves);
    AcGePoint2d centre = selection.basePoint;
    if (isStraight(at))
        alignOntoPoint(moved, selection.baseLine, at.angle, settings.spacing, settings.adjustSpacing,
                       at.point, at.point - directionOf(at), at.curveId, centre);
    else
        alignAwayFromPoint(moved, selection.baseLine, at.angle, settings.spacing, settings.adjustSpacing,
                           centre, inPlane(at.point), inPlane(at.centre));
    return {moved, at.point};
}

// ---- one by one

Aligned align(const AcDbObjectIdArray& ids, const AlignmentLine& line, const Settings& settings) {
    AcDbObjectIdArray aligned;
    AcGePoint3dArray pivots;
    const AcDbObjectPointer<AcDbEntity> baseLine{line.id};
    if (baseLine.openStatus() != Acad::eOk) return {aligned, pivots};
    for (const AcDbObjectId id : ids) {
        AcGePoint3d landing;
        const int status = alignObjectToBaseLine(id, line.pick, line.angle, settings.spacing,
                                                 settings.adjustSpacing, *baseLine.object(), landing);
        if (status == notHandled) continue;
        aligned.append(id);
        pivots.append(landing);
    }
    return {aligned, pivots};
}

int alignOne(AcDbObjectId id, const AlignmentPoint& at, const Settings& settings) {
    return isStraight(at) ? alignObjectToGivenLine(id, at.angle, settings.spacing, settings.adjustSpacing,
                                                   at.point, at.point + directionOf(at), at.curveId)
                          : alignObjectToGivenCircle(id, at.angle, settings.spacing, settings.adjustSpacing,
                                                     at.point, at.centre, at.radius);
}

Aligned align(const AcDbObjectIdArray& ids, const AlignmentPoint& at, const Settings& settings) {
    AcDbObjectIdArray aligned;
    for (const AcDbObjectId id : ids)
        if (alignOne(id, at, settings) != notHandled) aligned.append(id);
    return {aligned, at.point};
}

// ---- polylines by their segments

Aligned align(const PickedPolylines& picked, const AlignmentLine& line, const Settings& settings) {
    AcDbObjectIdArray aligned;
    AcGePoint3dArray pivots;
    const AcDbObjectPointer<AcDbEntity> baseLine{line.id};
    if (baseLine.openStatus() == Acad::eOk)
        alignPickedSegmentsToLine(picked.ids, picked.points, line.angle, settings.spacing,
                                  settings.adjustSpacing, inSpace(line.pick), *baseLine.object(), aligned,
                                  pivots);
    return {aligned, pivots};
}

Aligned align(const PickedPolylines& picked, const AlignmentPoint& at, const Settings& settings) {
    if (isStraight(at))
        alignPickedSegments(picked.ids, picked.points, at.angle, settings.spacing, settings.adjustSpacing,
                            at.point, at.curveId);
    else
        alignPickedSegmentsToCircle(picked.ids, picked.points, at.angle, settings.spacing,
                                    settings.adjustSpacing, at.point, at.centre, at.radius);
    return {picked.ids, at.point};
}

template <class What>
Aligned alignTo(const What& what, const Reference& reference, const Settings& settings) {
    return std::visit([&](const auto& to) { return align(what, to, settings); }, reference);
}
} // namespace

void Aligned::flip() const {
    if (const auto* points = std::get_if<AcGePoint3dArray>(&pivot))
        kernel::rotateEntitiesEach(ids, *points, PI);
    else
        kernel::rotateEntities(ids, std::get<AcGePoint3d>(pivot), PI);
}

Aligned alignWhole(const WholeSelection& selection, const Reference& reference, const Settings& settings) {
    return alignTo(selection, reference, settings);
}

Aligned alignEach(const AcDbObjectIdArray& ids, const Reference& reference, const Settings& settings) {
    return alignTo(ids, reference, settings);
}

Aligned alignPolylines(const PickedPolylines& picked, const Reference& reference, const Settings& settings) {
    return alignTo(picked, reference, settings);
}

} // namespace qx::objectalign
