// The front end of KV_PositionAlign. Which one there is, the build decides by the source file it takes.
#pragma once

#include "positionalign/PositionAlignSettings.h"

#include <optional>

namespace qx::positionalign {

/// Asks the person; nothing when they cancel.
std::optional<PositionAlignSettings> askSettings();

} // namespace qx::positionalign
