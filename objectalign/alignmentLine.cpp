#include "objectalign/alignmentLine.h"

#include "acutads.h"
#include "dbobjptr.h"
#include "kernel/classTests.h"
#include "kernel/construction.h"
#include "kernel/plane.h"
#include "objectalign/straightSegments.h"

#include <numbers>

namespace qx::objectalign {
namespace {
using kernel::inPlane;
using kernel::onGround;

struct Found {
    AcGePoint3d start, end;
    bool isLine; ///< a line of its own, not the segment of a polyline
};

std::optional<Found> lineIn(AcDbEntity& entity, const AcGePoint2d& pick) {
    if (const auto* line = kernel::asLine(&entity)) return Found{line->startPoint(), line->endPoint(), true};
    const auto nearest = nearestSegment(straightSegments(entity), [&](const AcGeLineSeg3d& segment) {
        return AcGeLineSeg3d{onGround(segment.startPoint()), onGround(segment.endPoint())}.distanceTo(
            kernel::inSpace(pick));
    });
    if (!nearest) return std::nullopt;
    return Found{nearest->startPoint(), nearest->endPoint(), false};
}

std::optional<Found> readLine(AcDbObjectId picked, const AcGePoint2d& pick) {
    const AcDbObjectPointer<AcDbEntity> entity{picked};
    if (entity.openStatus() != Acad::eOk) return std::nullopt;
    const auto found = lineIn(*entity.object(), pick);
    if (!found) acutPrintf(L"\n请选择线段对象");
    return found;
}

/// A line a hair below level points to the left, not down: what stands upright is not turned over by it.
double upwardAngle(const AcGeVector2d& direction) {
    const double angle = (direction.y < 0 ? -direction : direction).angle();
    return angle < std::numbers::pi ? angle : 0;
}
} // namespace

std::optional<AlignmentLine> analyseAlignmentLine(AcDbObjectId picked, const AcGePoint2d& pick,
                                                  ConstructionEntities& construction) {
    const auto found = readLine(picked, pick);
    if (!found) return std::nullopt;
    const double angle = upwardAngle(inPlane(found->end - found->start));
    if (found->isLine && found->start.z == 0 && found->end.z == 0) return AlignmentLine{picked, angle, pick};
    const AcDbObjectId standIn =
        construction.add(kernel::makeLine(onGround(found->start), onGround(found->end), 0));
    if (standIn.isNull()) return std::nullopt;
    return AlignmentLine{standIn, angle, pick};
}

} // namespace qx::objectalign
