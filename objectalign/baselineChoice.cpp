#include "objectalign/baselineChoice.h"

#include "adslib.h"
#include "dbobjptr.h"
#include "geassign.h"
#include "kernel/classTests.h"
#include "kernel/construction.h"
#include "objectalign/EntityPick.h"
#include "objectalign/straightSegments.h"

namespace qx::objectalign {
namespace {
constexpr Adesk::UInt16 red = 1;

AcDbObjectId baselineBetweenPoints(ConstructionEntities& construction) {
    ads_point first{}, second{};
    if (acedGetPoint(nullptr, L"请选择第一个对齐点：", first) != RTNORM) return AcDbObjectId::kNull;
    if (acedGetPoint(first, L"请选择第二个对齐点：", second) != RTNORM) return AcDbObjectId::kNull;
    return construction.add(kernel::makeLine(asPnt3d(first), asPnt3d(second), red));
}

/// Nothing when the object has no line to offer; null when a line can't be drawn in its place.
std::optional<AcDbObjectId> baselineOf(AcDbObjectId picked, const AcGePoint2d& pick,
                                       ConstructionEntities& construction) {
    AcDbObjectPointer<AcDbEntity> entity{picked};
    if (entity.openStatus() != Acad::eOk) return std::nullopt;
    if (kernel::asLine(entity)) return picked;
    const auto nearest = nearestByCarrier(straightSegments(*entity.object()), pick);
    entity.close();
    if (!nearest) return std::nullopt;
    return construction.add(kernel::makeLine(nearest->startPoint(), nearest->endPoint(), 0));
}
} // namespace

AcDbObjectId chooseBaseline(ConstructionEntities& construction) {
    for (;;) {
        const EntityPick pick = pickEntity(L"选择对齐基线（直线、多段线）或回车指定第一个对齐点：");
        if (pick.result == RTCAN) return AcDbObjectId::kNull;
        if (pick.result == RTERROR) return baselineBetweenPoints(construction);
        if (pick.result != RTNORM) continue;
        if (const auto baseline = baselineOf(pick.id, pick.point, construction)) return *baseline;
    }
}

} // namespace qx::objectalign
