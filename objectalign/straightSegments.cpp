#include "objectalign/straightSegments.h"

#include "kernel/classTests.h"
#include "kernel/lightCopy.h"
#include "kernel/plane.h"
#include "objectalign/intersections.h"

namespace qx::objectalign {
namespace {
std::vector<AcGeLineSeg3d> segmentsOf(const AcDbPolyline& polyline) {
    std::vector<AcGeLineSeg3d> segments;
    for (unsigned i = 0; i < polyline.numVerts(); ++i) {
        AcGeLineSeg3d segment;
        if (polyline.segType(i) != AcDbPolyline::kLine) continue;
        polyline.getLineSegAt(i, segment);
        segments.push_back(segment);
    }
    return segments;
}
} // namespace

std::vector<AcGeLineSeg3d> straightSegments(AcDbEntity& entity) {
    if (const auto* polyline = kernel::asPolyline(&entity)) return segmentsOf(*polyline);
    auto* polyline = kernel::asPolyline2d(&entity);
    const auto copy = polyline ? kernel::lightCopy(*polyline) : nullptr;
    return copy ? segmentsOf(*copy) : std::vector<AcGeLineSeg3d>{};
}

std::optional<AcGeLineSeg3d> nearestByCarrier(const std::vector<AcGeLineSeg3d>& segments,
                                              const AcGePoint2d& pick) {
    return nearestSegment(segments, [&](const AcGeLineSeg3d& each) {
        const auto foot =
            footOnCarrier(kernel::inPlane(each.startPoint()), kernel::inPlane(each.endPoint()), pick);
        return foot ? foot->distanceTo(pick) : std::numeric_limits<double>::infinity();
    });
}

} // namespace qx::objectalign
