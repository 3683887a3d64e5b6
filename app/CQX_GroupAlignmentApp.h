// The module's application object. Beside the sample entries, which come and go with the module, it registers
// the alignment commands, each in a group of its own name; these are left registered when the module is
// unloaded.
#pragma once

#include "arxEntryPoint.h"

class CQX_GroupAlignmentApp : public AcRxArxApp {
public:
    /// Registers the samples, then the alignment commands; the answer does not depend on the latter.
    AcRx::AppRetCode On_kInitAppMsg(void* pkt) override;
    AcRx::AppRetCode On_kUnloadAppMsg(void* pkt) override;
    void RegisterServerComponents() override;

    /// Sample: takes over the objects that were selected before the command.
    static void ADSKMyGroupMyPickFirst();
    /// Sample: a command of the application context.
    static void ADSKMyGroupMySessionCmd();
    /// Sample: a LISP function without a value.
    static int ads_MyLispFunction();
};
