#include "controls/icons.h"

#include <afxwin.h>

namespace qx::controls {

OwnedIcon loadIcon(int id, int size) {
    const LPCWSTR name = MAKEINTRESOURCEW(id);
    const HINSTANCE module = AfxFindResourceHandle(name, RT_GROUP_ICON);
    return OwnedIcon{static_cast<HICON>(::LoadImageW(module, name, IMAGE_ICON, size, size, LR_DEFAULTCOLOR))};
}

WindowIcons::WindowIcons(int id)
    : small{loadIcon(id, ::GetSystemMetrics(SM_CXSMICON))}, big{loadIcon(id, ::GetSystemMetrics(SM_CXICON))} {
}

} // namespace qx::controls
