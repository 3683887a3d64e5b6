// A module without a will of its own. Built several times, with another PUPPET letter each.
#include "Stage.h"

static void runCommand() { Stage::get().onCommand(PUPPET); }
static int callFunction() { return Stage::get().onFunction(PUPPET); }

extern "C" QX_MODULE_API AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* pkt) {
    return Stage::get().onMessage({PUPPET, pkt, &runCommand, &callFunction}, msg);
}

#ifndef WITHOUT_VERSION
extern "C" QX_MODULE_API int acrxGetApiVersion() { return API_VERSION; }
#endif
