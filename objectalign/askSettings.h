// The front ends of KV_ObjectAlign.
#pragma once

#include "objectalign/ObjectAlignSettings.h"

#include <optional>

namespace qx::objectalign {

/// Asks the person, by dialog or by prompts, whichever this build has and the host wants; nothing when they
/// cancel.
std::optional<ObjectAlignSettings> askSettings();

/// Asks at the command line.
std::optional<ObjectAlignSettings> settingsFromPrompts();

} // namespace qx::objectalign
