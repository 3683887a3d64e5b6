#include "positionalign/command.h"

#include "positionalign/actions.h"
#include "positionalign/askSettings.h"

#include "acutads.h"
#include "adslib.h"
#include "kernel/SelectionSet.h"

namespace qx::positionalign {
namespace {
void run(const PositionAlignSettings& settings) {
    if (settings.mode != SelectionMode::objects && settings.mode != SelectionMode::groups) return;

    ads_name selection{0, 0};
    if (acedSSGet(nullptr, nullptr, nullptr, nullptr, selection) == RTCAN) return;
    // Enter names no point, and none could be meant: it ends the command as Esc does.
    ads_point base{0, 0, 0};
    if (settings.asksBasePoint && acedGetPoint(nullptr, L"指定基点:", base) != RTNORM) return;

    Adesk::Int32 count = 0;
    const bool hasSelection = acedSSLength(selection, &count) == RTNORM;
    if (hasSelection && count == 0) {
        acutPrintf(L"\n没有选中任何对象，未进行对齐处理！");
        return;
    }
    // Without a set there is nothing to do about objects; groups still answer that there is none.
    applyAction(settings, kernel::selectedIds(selection), {base[0], base[1], base[2]});
}
} // namespace

void runCommand() {
    if (const auto settings = askSettings()) run(*settings);
}

} // namespace qx::positionalign
