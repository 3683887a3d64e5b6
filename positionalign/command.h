// KV_PositionAlign: settings, then a selection, then a base point where the action needs one, then the moves.
#pragma once

namespace qx::positionalign {

/// One run of the command. Everything it does is seen in the drawing and at the command line. A cancelled
/// prompt ends it quietly before anything has moved. Selection sets are left to the host, which ends them
/// with the command.
void runCommand();

} // namespace qx::positionalign
