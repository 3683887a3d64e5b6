// The window with the drawing: hands mouse movements on to the desk, and shows the picture that it composes.
#pragma once

#include "desktop/Desk.h"
#include "desktop/GdiText_win32.h"

#include <memory>
#include <optional>
#include <windows.h>

namespace qx::desktop {

class Canvas {
public:
    Canvas(HWND parent, Desk& desk);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HWND window() const { return window_; }
    /// A message of the window.
    LRESULT handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void place(const RECT& place);
    /// Has the picture painted again where it is stale.
    void update();
    /// A turn of the wheel, wherever it was sent; `place` is on the screen.
    void wheel(int delta, POINT place);

private:
    class Bitmap;

    void resize();
    void paint();
    void endDrag(WPARAM keys);
    void mouseMoved(const AcGePoint2d& place, WPARAM keys);

    Desk& desk_;
    HWND window_ = nullptr;
    std::unique_ptr<Bitmap> scene_, frame_;
    std::unique_ptr<GdiText> texts_;
    std::optional<POINT> panFrom_; ///< while it is dragged
};

} // namespace qx::desktop
