// The front end of KV_ObjectAlign. Which one there is, the build decides by the source file it takes.
#pragma once

#include "objectalign/ObjectAlignSettings.h"

#include <optional>

namespace qx::objectalign {

/// Asks the person; nothing when they cancel.
std::optional<ObjectAlignSettings> askSettings();

} // namespace qx::objectalign
