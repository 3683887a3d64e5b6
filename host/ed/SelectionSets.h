// The selection sets that modules hold, at most 128 in a session, all drawings together. A set's name is good
// until the set is freed, by the module, at the end of its command, or with its drawing; it is never given
// out again.
#pragma once

#include "ed/RecordSet.h"

#include "adsdef.h"

#include <map>

namespace qx::ed {

class QX_HOST_API SelectionSets {
public:
    static constexpr std::size_t limit = 128;

    /// Names the new set; false, and `name` unchanged, when there are as many as there may be.
    bool create(ads_name name, RecordSet set);
    /// Null for a name of no set.
    RecordSet* find(const ads_name name);
    bool free(const ads_name name);
    /// Frees all; how many those were.
    std::size_t freeAll();
    std::size_t count() const { return sets_.size(); }

private:
    std::map<Adesk::Int64, RecordSet> sets_;
    Adesk::Int64 lastNumber_ = 0;
};

} // namespace qx::ed
