// The names of status values, for people who read reports.
#pragma once

#include "acadstrc.h"
#include "qxexport.h"

namespace qx::ed {

/// "eOnLockedLayer" and so on; "unknown status" for a number without a name.
QX_HOST_API const char* nameOf(Acad::ErrorStatus status);

} // namespace qx::ed
