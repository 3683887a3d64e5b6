// The groups that a selection stands for.
#pragma once

#include "dbidar.h"

namespace qx::positionalign {

/// In the order of the group dictionary, each once. When there is none, says so at the command line.
AcDbObjectIdArray touchedGroups(const AcDbObjectIdArray& selected);

} // namespace qx::positionalign
