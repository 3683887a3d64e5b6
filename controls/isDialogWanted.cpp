#include "controls/isDialogWanted.h"

#include "acedads.h"

namespace qx::controls {

bool isDialogWanted() {
    resbuf value{};
    return acedGetVar(L"CMDDIA", &value) != RTNORM || value.resval.rint != 0;
}

} // namespace qx::controls
