#include "objectalign/EntityPick.h"

#include "dbmain.h"
#include "geassign.h"

namespace qx::objectalign {

EntityPick pickEntity(const ACHAR* prompt) {
    EntityPick pick{RTERROR};
    ads_point point{};
    pick.result = acedEntSel(prompt, pick.name, point);
    if (pick.result != RTNORM) return pick;
    acdbGetObjectId(pick.id, pick.name);
    pick.point = asPnt2d(point);
    return pick;
}

} // namespace qx::objectalign
