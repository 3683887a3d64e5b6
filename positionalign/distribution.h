// Even distribution: the items stay in the order of their centres, the first stays where it is, and the
// others move along the axis until all gaps between neighbours are equal. Gaps are negative when the items
// need more room than there is.
//
// Of items with equal centres the first one takes part, the others stay where they are; but all of them count
// when the free space is divided. A single item moves nothing.
#pragma once

#include "positionalign/ItemExtent.h"

namespace qx::positionalign {

/// Every object is an item. An id that is listed twice is one item, counted twice.
void distributeObjects(const AcDbObjectIdArray& ids, Axis axis);

/// Every group that the ids touch is an item and moves as a whole. When they touch none, says so at the
/// command line.
void distributeGroups(const AcDbObjectIdArray& ids, Axis axis);

} // namespace qx::positionalign
