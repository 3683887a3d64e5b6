#include "objectalign/command.h"

#include "acdocman.h"
#include "acutads.h"
#include "adslib.h"
#include "dbobjptr.h"
#include "geassign.h"
#include "kernel/SelectionSet.h"
#include "kernel/polylineVertices.h"
#include "objectalign/EntityPick.h"
#include "objectalign/alignSelection.h"
#include "objectalign/alignmentPointChoice.h"
#include "objectalign/askSettings.h"
#include "objectalign/baselineChoice.h"

#include <optional>

namespace qx::objectalign {
namespace {
using Settings = ObjectAlignSettings;
using kernel::SelectionSet;

void sayNothingSelected() { acutPrintf(L"\n没有选中任何对象，未进行对齐处理！"); }

// ---- what to align to

std::optional<Reference> askLine(ConstructionEntities& construction) {
    const EntityPick pick = pickEntity(L"指定对齐线:");
    if (pick.result != RTNORM) return std::nullopt;
    return analyseAlignmentLine(pick.id, pick.point, construction);
}

std::optional<Reference> askReference(Action action, ConstructionEntities& construction) {
    if (action == Action::toLine) return askLine(construction);
    if (action == Action::atPoint) return chooseAlignmentPoint(construction);
    return std::nullopt;
}

/// The base line and the point about which the selection is turned. False when the person gives up.
bool askBase(WholeSelection& selection, ConstructionEntities& construction) {
    selection.baseLine = chooseBaseline(construction);
    if (selection.baseLine.isNull()) return false;
    ads_point base{};
    if (acedGetPoint(nullptr, L"指定旋转基准点：", base) != RTNORM) return false;
    selection.basePoint = asPnt2d(base);
    return true;
}

// ---- the three modes

std::optional<Aligned> runOnGroups(const Settings& settings, ConstructionEntities& construction) {
    SelectionSet set;
    if (acedSSGet(nullptr, nullptr, nullptr, nullptr, set.name()) == RTCAN) return std::nullopt;
    WholeSelection selection{.ids = set.ids(), .moves = Moves::groups};
    if (selection.ids.isEmpty()) {
        sayNothingSelected();
        return std::nullopt;
    }
    if (!askBase(selection, construction)) return std::nullopt;
    const auto reference = askReference(settings.action, construction);
    if (!reference) return std::nullopt;
    return alignWhole(selection, *reference, settings);
}

/// Another object is answered with a new line.
bool isPolyline(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbEntity> entity{id};
    if (entity.openStatus() != Acad::eOk) return false;
    if (kernel::isPolyline(*entity.object())) return true;
    acutPrintf(L"\n");
    return false;
}

/// Until Enter, Esc or a miss. What was picked so far is shown as selected.
PickedPolylines pickPolylines() {
    PickedPolylines picked;
    SelectionSet set;
    acedSSAdd(nullptr, nullptr, set.name());
    for (;;) {
        const EntityPick pick = pickEntity(L"请选择多段线：");
        if (pick.result != RTNORM) return picked;
        if (!isPolyline(pick.id)) continue;
        acedSSAdd(pick.name, set.name(), set.name());
        picked.ids.append(pick.id);
        picked.points.append(pick.point);
        acutPrintf(L"选择集中对象：%d\n", picked.ids.length());
        acedSSSetFirst(set.name(), nullptr);
    }
}

std::optional<Aligned> runOnPolylines(const Settings& settings, ConstructionEntities& construction) {
    const PickedPolylines picked = pickPolylines();
    const auto reference = askReference(settings.action, construction);
    if (!reference) return std::nullopt;
    return alignPolylines(picked, *reference, settings);
}

int select(Method method, SelectionSet& set) {
    if (method == Method::whole) return acedSSGet(nullptr, nullptr, nullptr, nullptr, set.name());
    const ACHAR* const prompts[] = {L" 请选择文字、直线、块、多段线和圆弧：", L""};
    return acedSSGet(L":$", prompts, nullptr, nullptr, set.name());
}

// Whether anything was selected is looked at last of all, when everything has been asked.
std::optional<Aligned> runOnObjects(const Settings& settings, ConstructionEntities& construction) {
    SelectionSet set;
    if (select(settings.method, set) == RTCAN) return std::nullopt;
    WholeSelection selection;
    if (settings.method == Method::whole && !askBase(selection, construction)) return std::nullopt;
    const auto reference = askReference(settings.action, construction);
    if (!reference) return std::nullopt;
    selection.ids = set.ids();
    if (selection.ids.isEmpty()) {
        sayNothingSelected();
        return std::nullopt;
    }
    return settings.method == Method::whole ? alignWhole(selection, *reference, settings)
                                            : alignEach(selection.ids, *reference, settings);
}

std::optional<Aligned> runOn(const Settings& settings, ConstructionEntities& construction) {
    switch (settings.mode) {
    case SelectionMode::groups:
        return runOnGroups(settings, construction);
    case SelectionMode::polylines:
        return runOnPolylines(settings, construction);
    case SelectionMode::objects:
        return runOnObjects(settings, construction);
    }
    return std::nullopt;
}

// ---- after the alignment

void flipUntilAccepted(const Aligned& aligned) {
    ads_point click{};
    while (acedGetPoint(nullptr, L"回车结束或[鼠标左键切换方向]:", click) == RTNORM) aligned.flip();
}

/// What was shown as selected is let go by a cancel at the next prompt.
void queueCancel() {
    AcApDocManager* documents = acDocManagerPtr();
    documents->sendStringToExecute(documents->curDocument(), L"\x03", true, false, true);
}
} // namespace

void runCommand() {
    const auto settings = askSettings();
    if (!settings) return;
    ConstructionEntities construction;
    const auto aligned = runOn(*settings, construction);
    construction.erase();
    if (!aligned) return;
    flipUntilAccepted(*aligned);
    queueCancel();
}

} // namespace qx::objectalign
