// What an action does to a selection: the one place that tells the nine actions and the two modes apart.
#pragma once

#include "dbidar.h"
#include "gepnt3d.h"
#include "positionalign/PositionAlignSettings.h"

namespace qx::positionalign {

/// Objects are measured and moved one by one in list order, and the first one that can't be opened ends the
/// run: what was moved stays moved, nothing is distributed. Groups are found anew for each move. A mode that
/// is neither does nothing.
void applyAction(const PositionAlignSettings& settings, const AcDbObjectIdArray& ids,
                 const AcGePoint3d& base);

} // namespace qx::positionalign
