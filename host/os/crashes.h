// What happens when the program itself is broken.
#pragma once

#include "qxexport.h"

namespace qx::os {

/// From now on a crash ends the process at once with an exit code other than 0, without a dialog, and where
/// the system itself is silent about it, with a line on stderr that says where it was.
QX_HOST_API void endOnCrash();

} // namespace qx::os
