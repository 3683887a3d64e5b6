// The front ends of KV_PositionAlign.
#pragma once

#include "positionalign/PositionAlignSettings.h"

#include <optional>

namespace qx::positionalign {

/// Asks the person, by dialog or by prompts, whichever this build has and the host wants; nothing when they
/// cancel.
std::optional<PositionAlignSettings> askSettings();

/// Asks at the command line.
std::optional<PositionAlignSettings> settingsFromPrompts();

} // namespace qx::positionalign
