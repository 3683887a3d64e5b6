// How a command gets its settings: by dialog, or by prompts at the command line.
#pragma once

namespace qx::controls {

/// What the host's variable CMDDIA says; a host without it wants dialogs.
bool isDialogWanted();

} // namespace qx::controls
