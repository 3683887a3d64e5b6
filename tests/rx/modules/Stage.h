// Where puppet modules and the test that loads them meet: the test enters the stage in the system registry, a
// puppet finds it there, and asks it what to do with every message.
#pragma once

#include "accmd.h"
#include "rxdefs.h"
#include "rxdict.h"

#include <functional>
#include <string>

/// A puppet as its entry point presents it; the functions are the module's own code.
struct Puppet {
    char name;
    void* packet;
    AcRxFunctionPtr command; ///< reports to `onCommand`
    int (*function)();       ///< reports to `onFunction`
};

class Stage : public AcRxObject {
public:
    std::function<AcRx::AppRetCode(const Puppet&, AcRx::AppMsgCode)> onMessage;
    std::function<void(char puppet)> onCommand;
    std::function<int(char puppet)> onFunction;

    static Stage& get() { return *static_cast<Stage*>(acrxSysRegistry()->at(L"Stage")); }
};
