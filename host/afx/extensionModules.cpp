#include "acui.h"
#include "afxext.h"

#include <algorithm>
#include <vector>

namespace {

/// Oldest first.
std::vector<CDynLinkLibrary*>& chain() {
    static std::vector<CDynLinkLibrary*> libraries;
    return libraries;
}

bool has(HMODULE module, LPCWSTR name, LPCWSTR type) {
    return ::FindResourceW(module, name, type) != nullptr;
}

} // namespace

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& module, HMODULE instance) {
    if (module.bInitialized) return TRUE;
    if (!instance) return FALSE;
    module = {TRUE, instance, instance};
    return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& module, BOOL) {
    const auto libraries = chain();
    for (CDynLinkLibrary* library : libraries)
        if (library->m_hModule == module.hModule) delete library;
    module.bInitialized = FALSE;
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& module)
    : m_hModule{module.hModule}, m_hResource{module.hResource} {
    chain().push_back(this);
}

CDynLinkLibrary::~CDynLinkLibrary() { std::erase(chain(), this); }

HINSTANCE AfxFindResourceHandle(LPCWSTR name, LPCWSTR type) {
    const HINSTANCE current = AfxGetResourceHandle();
    const HINSTANCE own = current ? current : ::GetModuleHandleW(nullptr);
    if (has(own, name, type)) return own;
    const auto& libraries = chain();
    const auto found = std::find_if(libraries.rbegin(), libraries.rend(),
                                    [&](auto* each) { return has(each->m_hResource, name, type); });
    return found == libraries.rend() ? own : (*found)->m_hResource;
}

// The dialogs of this host need no more than the system's own controls, which are started with the first of
// them.
void InitAcUiDLL() {}
