// A module beside ours that has dialogs under the same numbers.
#include <acui.h>
#include <afxext.h>

static AFX_EXTENSION_MODULE module{};

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH && AfxInitExtensionModule(module, instance)) new CDynLinkLibrary(module);
    if (reason == DLL_PROCESS_DETACH) AfxTermExtensionModule(module);
    return TRUE;
}
