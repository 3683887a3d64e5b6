// One object picked at the command line.
#pragma once

#include "adslib.h"
#include "dbid.h"
#include "gepnt2d.h"

namespace qx::objectalign {

struct EntityPick {
    int result; ///< of acedEntSel(); without RTNORM the rest means nothing
    ads_name name{0, 0};
    AcDbObjectId id = {};
    AcGePoint2d point = {}; ///< where it was picked, which is near it and not on it
};

EntityPick pickEntity(const ACHAR* prompt);

} // namespace qx::objectalign
