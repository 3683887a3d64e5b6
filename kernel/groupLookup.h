// Which groups a selection touches, and what a group holds.
#pragma once

#include "dbidar.h"

namespace qx::kernel {

/// The groups of the working database that hold at least one of the ids, each once, in the order of the group
/// dictionary. Groups that can't be opened for writing are left out. Takes time linear in the members read
/// plus the ids given.
AcDbObjectIdArray groupsContaining(const AcDbObjectIdArray& ids);

/// The members in the group's order; none when the group can't be opened for reading.
AcDbObjectIdArray groupMembers(AcDbObjectId group);

} // namespace qx::kernel
