#include "objectalign/tangent.h"

#include "acutads.h"
#include "dbobjptr.h"
#include "kernel/classTests.h"
#include "kernel/construction.h"
#include "kernel/plane.h"
#include "objectalign/angles.h"

#include <optional>

namespace qx::objectalign {
namespace {
using kernel::inPlane;
using kernel::inSpace;

struct Circular {
    AcGePoint3d centre;
    double radius;
};

/// Nothing for any other object, which is refused at the command line.
std::optional<Circular> readCircular(AcDbObjectId curveId) {
    const AcDbObjectPointer<AcDbEntity> entity{curveId};
    if (entity.openStatus() != Acad::eOk) return std::nullopt;
    if (const auto* circle = kernel::asCircle(entity)) return Circular{circle->center(), circle->radius()};
    if (const auto* arc = kernel::asArc(entity)) return Circular{arc->center(), arc->radius()};
    acutPrintf(L"\n该点不是切点");
    return std::nullopt;
}
} // namespace

Tangent tangentAt(AcDbObjectId curveId, const AcGePoint2d& picked) {
    const auto curve = readCircular(curveId);
    if (!curve) return {};
    const AcGePoint2d centre = inPlane(curve->centre);
    AcGe::ErrorCondition flag = AcGe::kOk;
    const AcGeVector2d outward = AcGeVector2d{picked - centre}.normalize(AcGeContext::gTol, flag);
    if (flag != AcGe::kOk) return {};

    Tangent tangent{.curve = curveId, .centre = curve->centre, .radius = curve->radius};
    tangent.point = picked + outward * (curve->radius - centre.distanceTo(picked));
    const AcGePoint2d end = AcGePoint2d{centre}.rotateBy(HALF_PI, tangent.point);
    tangent.angle = (end - tangent.point).angle();
    tangent.lineStart = inSpace(tangent.point);
    tangent.lineEnd = inSpace(end);
    tangent.line = kernel::makeLine(tangent.lineStart, tangent.lineEnd, 0);
    return tangent;
}

} // namespace qx::objectalign
