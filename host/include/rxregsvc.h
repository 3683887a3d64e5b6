// Services of the runtime that need no object: classes, the system registry, modules.
#pragma once

#include "rxdefs.h"
#include "rxdict.h"

/// Announces that new classes are complete. Descriptors of this host link themselves, so nothing is left to
/// do.
QX_HOST_API void acrxBuildClassHierarchy();

/// Loads a module by file name or path. `printit` shows the reason of a failure to the person; `asCmd`
/// changes nothing.
QX_HOST_API bool acrxLoadModule(const ACHAR* moduleName, bool printit, bool asCmd = false);
/// Unloads a module by name or path; false for one that is locked, running, or not loaded.
QX_HOST_API bool acrxUnloadModule(const ACHAR* moduleName, bool asCmd = false);

/// Lets the module whose entry point was given `pkt` be unloaded; false for a stranger's `pkt`.
QX_HOST_API bool acrxUnlockApplication(void* pkt);
