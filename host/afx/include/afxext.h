// What a module does to be part of the program as far as windows and resources go.
#pragma once

#include "afxwin.h"

/// A module's own record, static in it.
struct AFX_EXTENSION_MODULE {
    BOOL bInitialized;
    HMODULE hModule;
    HMODULE hResource;
};

/// To be called when the module is attached. A record that is initialised already stays as it is. FALSE
/// without a module.
QX_HOST_API BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& module, HMODULE instance);

/// To be called when the module is detached: takes its resources out of the chain.
QX_HOST_API void AfxTermExtensionModule(AFX_EXTENSION_MODULE& module, BOOL all = FALSE);

/// Puts a module's resources into the chain that is searched when the current handle lacks a resource. Made
/// by `new`; AfxTermExtensionModule deletes it.
class QX_HOST_API CDynLinkLibrary {
public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& module);
    ~CDynLinkLibrary();
    CDynLinkLibrary(const CDynLinkLibrary&) = delete;
    CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;

    HMODULE m_hModule;
    HMODULE m_hResource;
};
