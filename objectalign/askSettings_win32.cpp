#include "objectalign/askSettings.h"

#include "app/ModuleResourceSwitch.h"
#include "controls/isDialogWanted.h"
#include "objectalign/DlgObjectAlign.h"

namespace qx::objectalign {
namespace {

std::optional<ObjectAlignSettings> settingsFromDialog() {
    const ModuleResourceSwitch ownResources;
    DlgObjectAlign dialog;
    return dialog.DoModal() == IDOK ? std::optional{dialog.settings()} : std::nullopt;
}

} // namespace

std::optional<ObjectAlignSettings> askSettings() {
    return controls::isDialogWanted() ? settingsFromDialog() : settingsFromPrompts();
}

} // namespace qx::objectalign
