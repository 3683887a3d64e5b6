// KV_ObjectAlign: turns objects, picked polylines or groups onto a line or a tangent, then flips them as
// often as the person clicks.
#pragma once

namespace qx::objectalign {

/// From the questions about the settings to the last flip.
void runCommand();

} // namespace qx::objectalign
