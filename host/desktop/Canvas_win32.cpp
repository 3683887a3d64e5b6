#include "desktop/Canvas_win32.h"

#include "desktop/windowProcedure_win32.h"

#include <windowsx.h>

#include <algorithm>
#include <cmath>

namespace qx::desktop {
namespace {

constexpr wchar_t className[] = L"QxCanvas";

AcGePoint2d placeIn(LPARAM lParam) {
    return {static_cast<double>(GET_X_LPARAM(lParam)), static_cast<double>(GET_Y_LPARAM(lParam))};
}

bool isShiftDown(WPARAM keys) { return (keys & MK_SHIFT) != 0; }

} // namespace

/// Pixels that both the system and the desk draw into.
class Canvas::Bitmap {
public:
    Bitmap(int width, int height) : context_{::CreateCompatibleDC(nullptr)} {
        BITMAPINFO info{};
        info.bmiHeader = {
            sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0}; // from the top
        bitmap_ = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels_, nullptr, 0);
        old_ = ::SelectObject(context_, bitmap_);
    }
    ~Bitmap() {
        ::SelectObject(context_, old_);
        ::DeleteObject(bitmap_);
        ::DeleteDC(context_);
    }
    Bitmap(const Bitmap&) = delete;
    Bitmap& operator=(const Bitmap&) = delete;

    HDC context() const { return context_; }
    draw::Colour* pixels() const { return static_cast<draw::Colour*>(pixels_); }

private:
    HDC context_;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ old_ = nullptr;
    void* pixels_ = nullptr;
};

Canvas::Canvas(HWND parent, Desk& desk) : desk_{desk} {
    const HINSTANCE instance = ::GetModuleHandleW(nullptr);
    WNDCLASSEXW info{};
    info.cbSize = sizeof info;
    info.style = CS_DBLCLKS;
    info.lpfnWndProc = &windowProcedure<Canvas>;
    info.hInstance = instance;
    info.lpszClassName = className;
    ::RegisterClassExW(&info);
    window_ = ::CreateWindowExW(0, className, nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, 0, 0, 1, 1,
                                parent, nullptr, instance, this);
}

Canvas::~Canvas() = default;

void Canvas::place(const RECT& place) {
    ::MoveWindow(window_, place.left, place.top, place.right - place.left, place.bottom - place.top, TRUE);
}

void Canvas::update() {
    if (desk_.needsPaint()) ::InvalidateRect(window_, nullptr, FALSE);
}

LRESULT Canvas::handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    window_ = window;
    const AcGePoint2d place = placeIn(lParam);
    switch (message) {
    case WM_SIZE:
        resize();
        return 0;
    case WM_PAINT:
        paint();
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_SETCURSOR:
        if (LOWORD(lParam) != HTCLIENT) break;
        // Over a drawing the crosshair stands there.
        ::SetCursor(desk_.showsDrawing() ? nullptr : ::LoadCursorW(nullptr, IDC_ARROW));
        return TRUE;
    case WM_MOUSEMOVE:
        mouseMoved(place, wParam);
        return 0;
    case WM_MOUSELEAVE:
        desk_.leave();
        update();
        return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        ::SetCapture(window_);
        desk_.press(place, isShiftDown(wParam));
        return 0;
    case WM_LBUTTONUP:
        desk_.release(place, isShiftDown(wParam));
        endDrag(wParam);
        return 0;
    case WM_RBUTTONDOWN:
        desk_.type("");
        return 0;
    case WM_MBUTTONDOWN:
        ::SetCapture(window_);
        panFrom_ = POINT{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        return 0;
    case WM_MBUTTONUP:
        panFrom_.reset();
        endDrag(wParam);
        return 0;
    case WM_CAPTURECHANGED:
        if (reinterpret_cast<HWND>(lParam) == window_) return 0;
        panFrom_.reset();
        desk_.letGo();
        return 0;
    case WM_MBUTTONDBLCLK:
        desk_.zoomExtents();
        return 0;
    default:
        break;
    }
    return ::DefWindowProcW(window_, message, wParam, lParam);
}

void Canvas::resize() {
    RECT area{};
    ::GetClientRect(window_, &area);
    const int width = std::max<int>(area.right, 1), height = std::max<int>(area.bottom, 1);
    texts_.reset(); // before the bitmap that it draws into
    scene_ = std::make_unique<Bitmap>(width, height);
    frame_ = std::make_unique<Bitmap>(width, height);
    texts_ = std::make_unique<GdiText>(scene_->context());
    desk_.setCanvas(scene_->pixels(), width, height, *texts_, static_cast<int>(::GetDpiForWindow(window_)));
    update();
}

void Canvas::paint() {
    PAINTSTRUCT info{};
    const HDC screen = ::BeginPaint(window_, &info);
    if (frame_) {
        desk_.compose(frame_->pixels());
        ::BitBlt(screen, 0, 0, desk_.view().width(), desk_.view().height(), frame_->context(), 0, 0, SRCCOPY);
    }
    ::EndPaint(window_, &info);
}

/// Another button may still drag.
void Canvas::endDrag(WPARAM keys) {
    if (!(keys & (MK_LBUTTON | MK_MBUTTON))) ::ReleaseCapture();
}

void Canvas::mouseMoved(const AcGePoint2d& place, WPARAM keys) {
    TRACKMOUSEEVENT leave{sizeof leave, TME_LEAVE, window_, 0};
    ::TrackMouseEvent(&leave);
    if (panFrom_ && (keys & MK_MBUTTON)) {
        const POINT to{std::lround(place.x), std::lround(place.y)};
        desk_.pan(to.x - panFrom_->x, to.y - panFrom_->y);
        panFrom_ = to;
    }
    desk_.moveTo(place);
    update();
}

void Canvas::wheel(int delta, POINT place) {
    constexpr double perNotch = 1.25;
    RECT area{};
    ::GetClientRect(window_, &area);
    ::ScreenToClient(window_, &place);
    if (!::PtInRect(&area, place)) return;
    desk_.zoom(std::pow(perNotch, static_cast<double>(delta) / WHEEL_DELTA),
               {static_cast<double>(place.x), static_cast<double>(place.y)});
    update();
}

} // namespace qx::desktop
