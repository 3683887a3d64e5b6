// A selection set of the editor that is freed at the end of a scope, and what a set holds.
#pragma once

#include "adslib.h"
#include "dbidar.h"

namespace qx::kernel {

/// In the order of the set; a null id stands for a member that can't be named. None for the name of no set.
AcDbObjectIdArray selectedIds(const ads_name set);

class SelectionSet {
public:
    SelectionSet() = default;
    ~SelectionSet();
    SelectionSet(const SelectionSet&) = delete;
    SelectionSet& operator=(const SelectionSet&) = delete;

    /// What the editor's functions name it by; it names no set until one of them has made one here.
    ads_name& name() { return name_; }
    AcDbObjectIdArray ids() const { return selectedIds(name_); }

private:
    ads_name name_{0, 0};
};

} // namespace qx::kernel
