// The way from a window to the object that it is made for, which is what CreateWindowEx is given at last.
#pragma once

#include <windows.h>

namespace qx::desktop {

/// Hands each message to `Window::handle(window, message, wParam, lParam)`, from the first on.
template <class Window>
LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE)
        ::SetWindowLongPtrW(
            window, GWLP_USERDATA,
            reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
    auto* object = reinterpret_cast<Window*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    return object ? object->handle(window, message, wParam, lParam)
                  : ::DefWindowProcW(window, message, wParam, lParam);
}

} // namespace qx::desktop
