#include "positionalign/askSettings.h"

// There are no dialogs here.
std::optional<qx::positionalign::PositionAlignSettings> qx::positionalign::askSettings() {
    return settingsFromPrompts();
}
