#include "controls/icons.h"

#include <afxwin.h>

namespace qx::controls {
namespace {

HICON load(int id, int size, UINT flags) {
    const LPCWSTR name = MAKEINTRESOURCEW(id);
    const HINSTANCE module = AfxFindResourceHandle(name, RT_GROUP_ICON);
    return static_cast<HICON>(::LoadImageW(module, name, IMAGE_ICON, size, size, flags));
}

} // namespace

OwnedIcon loadIcon(int id, int size) { return OwnedIcon{load(id, size, LR_DEFAULTCOLOR)}; }

HICON sharedWindowIcon(int id, int sizeMetric) {
    return load(id, ::GetSystemMetrics(sizeMetric), LR_DEFAULTCOLOR | LR_SHARED);
}

} // namespace qx::controls
