// The system's own entry to the module: it becomes part of the program as far as windows and resources go.
#include "dbxEntryPoint.h"

#include <acui.h>
#include <afxext.h>

HINSTANCE _hdllInstance = nullptr;

static AFX_EXTENSION_MODULE extensionModule{};

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH && !extensionModule.bInitialized) {
        if (!AfxInitExtensionModule(extensionModule, instance)) return FALSE;
        _hdllInstance = instance;
        new CDynLinkLibrary(extensionModule); // deleted with the chain, below
        InitAcUiDLL();
    } else if (reason == DLL_PROCESS_DETACH) {
        AfxTermExtensionModule(extensionModule);
    }
    return TRUE;
}
