// A fixed set of object ids, made once from a list and then only asked. One flat table, so that a selection
// of a million objects costs one allocation. A null id is never a member.
#pragma once

#include "dbidar.h"

#include <vector>

namespace qx::kernel {

class IdSet {
public:
    explicit IdSet(const AcDbObjectIdArray& ids);
    bool contains(AcDbObjectId id) const { return !id.isNull() && slots_[slotOf(id)] == id; }

private:
    /// Where the id is, or else the empty slot where it would go. At least half of the slots are empty.
    std::size_t slotOf(AcDbObjectId id) const;

    std::vector<AcDbObjectId> slots_; ///< a power of two of them; null: empty
    unsigned shift_;
};

} // namespace qx::kernel
