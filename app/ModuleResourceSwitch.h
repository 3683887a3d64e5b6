// Makes a module's resources the first to be looked up, for the length of a scope.
#pragma once

#include "dbxEntryPoint.h"

class ModuleResourceSwitch {
public:
    /// This module's resources unless another instance is given.
    explicit ModuleResourceSwitch(HINSTANCE instance = _hdllInstance) : saved_{AfxGetResourceHandle()} {
        AfxSetResourceHandle(instance);
    }
    /// Puts back the handle that was current before.
    ~ModuleResourceSwitch() { AfxSetResourceHandle(saved_); }

    ModuleResourceSwitch(const ModuleResourceSwitch&) = delete;
    ModuleResourceSwitch& operator=(const ModuleResourceSwitch&) = delete;

private:
    HINSTANCE saved_;
};
