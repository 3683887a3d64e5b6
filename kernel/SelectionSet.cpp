#include "kernel/SelectionSet.h"

#include "dbmain.h"

namespace qx::kernel {

AcDbObjectIdArray selectedIds(const ads_name set) {
    Adesk::Int32 count = 0;
    if (acedSSLength(set, &count) != RTNORM) return AcDbObjectIdArray();
    AcDbObjectIdArray ids(count);
    for (int i = 0; i < count; ++i) {
        ads_name name{0, 0};
        AcDbObjectId id;
        if (acedSSName(set, i, name) == RTNORM) acdbGetObjectId(id, name);
        ids.append(id);
    }
    return ids;
}

SelectionSet::~SelectionSet() {
    if (name_[0] != 0 || name_[1] != 0) acedSSFree(name_);
}

} // namespace qx::kernel
