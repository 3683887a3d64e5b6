#include "positionalign/command.h"

#include "kernel/entityAccess.h"
#include "positionalign/alignment.h"
#include "positionalign/askSettings.h"
#include "positionalign/distribution.h"

#include "adslib.h"

namespace qx::positionalign {
namespace {
/// A null id when the set has no such object.
AcDbObjectId idAt(const ads_name selection, int index) {
    ads_name name{0, 0};
    AcDbObjectId id;
    if (acedSSName(selection, index, name) == RTNORM) acdbGetObjectId(id, name);
    return id;
}

/// Each object is measured and moved before the next one is looked at. The first one that can't be opened
/// ends the run: what was moved stays moved, nothing is distributed. All moves of an object start from the
/// box that it had before the first of them.
void runOnObjects(const PositionAlignSettings& settings, const ads_name selection, int count,
                  const AcGePoint3d& base) {
    AcDbObjectIdArray ids(count);
    for (int i = 0; i < count; ++i) {
        const AcDbObjectId id = idAt(selection, i);
        AcDbExtents box;
        if (kernel::readExtents(id, box) != Acad::eOk) return;
        ids.append(id);
        for (const AlignmentMove& move : movesOf(settings.action))
            alignObject(id, box, move, base, settings.offset);
    }
    if (const auto axis = distributionAxis(settings.action)) distributeObjects(ids, *axis);
}

/// Each move takes all groups before the next one begins, and measures them anew.
void runOnGroups(const PositionAlignSettings& settings, const ads_name selection, int count,
                 const AcGePoint3d& base) {
    AcDbObjectIdArray ids(count);
    for (int i = 0; i < count; ++i) ids.append(idAt(selection, i));
    for (const AlignmentMove& move : movesOf(settings.action)) alignGroups(ids, move, base, settings.offset);
    if (const auto axis = distributionAxis(settings.action)) distributeGroups(ids, *axis);
}

void run(const PositionAlignSettings& settings) {
    const bool onObjects = settings.mode == SelectionMode::objects;
    if (!onObjects && settings.mode != SelectionMode::groups) return;

    ads_name selection{0, 0};
    if (acedSSGet(nullptr, nullptr, nullptr, nullptr, selection) == RTCAN) return;
    // Enter gives no point, and there is none that could be meant: it ends the command as Esc does.
    ads_point point{0, 0, 0};
    if (settings.asksBasePoint && acedGetPoint(nullptr, L"指定基点:", point) != RTNORM) return;

    Adesk::Int32 count = 0;
    const bool hasSelection = acedSSLength(selection, &count) == RTNORM;
    if (hasSelection && count == 0) {
        acutPrintf(L"\n没有选中任何对象，未进行对齐处理！");
        return;
    }
    // Without a selection the objects have nothing to say; the groups still tell that there is none.
    const AcGePoint3d base{point[0], point[1], point[2]};
    if (!onObjects)
        runOnGroups(settings, selection, hasSelection ? count : 0, base);
    else if (hasSelection)
        runOnObjects(settings, selection, count, base);
}
} // namespace

void runCommand() {
    if (const auto settings = askSettings()) run(*settings);
}

} // namespace qx::positionalign
