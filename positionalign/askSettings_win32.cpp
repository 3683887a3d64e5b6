#include "positionalign/askSettings.h"

#include "app/ModuleResourceSwitch.h"
#include "controls/isDialogWanted.h"
#include "positionalign/DlgPositionAlign.h"

namespace qx::positionalign {
namespace {

std::optional<PositionAlignSettings> settingsFromDialog() {
    const ModuleResourceSwitch ownResources;
    DlgPositionAlign dialog;
    return dialog.DoModal() == IDOK ? std::optional{dialog.settings()} : std::nullopt;
}

} // namespace

std::optional<PositionAlignSettings> askSettings() {
    return controls::isDialogWanted() ? settingsFromDialog() : settingsFromPrompts();
}

} // namespace qx::positionalign
