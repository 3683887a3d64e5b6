#include "objectalign/askSettings.h"

// There are no dialogs here.
std::optional<qx::objectalign::ObjectAlignSettings> qx::objectalign::askSettings() {
    return settingsFromPrompts();
}
