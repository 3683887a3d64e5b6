#include "positionalign/touchedGroups.h"

#include "kernel/groupLookup.h"

#include "acutads.h"

namespace qx::positionalign {

AcDbObjectIdArray touchedGroups(const AcDbObjectIdArray& selected) {
    const AcDbObjectIdArray groups = kernel::groupsContaining(selected);
    if (groups.isEmpty()) acutPrintf(L"所选对象未包含组\n");
    return groups;
}

} // namespace qx::positionalign
