// The linker of modules, as modules see it.
#pragma once

#include "rxregsvc.h"

class QX_HOST_API AcRxDynamicLinker : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcRxDynamicLinker)

    /// As acrxLoadModule and acrxUnloadModule.
    virtual bool loadModule(const ACHAR* fileName, bool printit, bool asCmd = false) = 0;
    virtual bool unloadModule(const ACHAR* fileName, bool asCmd = false) = 0;

    /// A module is locked, and can't be unloaded, until it unlocks itself. `pkt` is what its entry point was
    /// given; false for a stranger's.
    virtual bool lockApplication(void* pkt) const = 0;
    virtual bool unlockApplication(void* pkt) const = 0;
    /// False for a module that is not loaded, too.
    virtual bool isApplicationLocked(const ACHAR* name) const = 0;

    /// Whether the module gets along with several open drawings; it does not until it says so.
    virtual bool registerAppMDIAware(void* pkt) const = 0;
    virtual bool registerAppNotMDIAware(void* pkt) const = 0;
};

#define acrxDynamicLinker AcRxDynamicLinker::cast(acrxSysRegistry()->at(ACRX_T("DynamicLinker")))
