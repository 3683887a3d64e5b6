#include "controls/buttonPicture.h"

#include <algorithm>

namespace qx::controls {
namespace {

constexpr int borderWidth = 3;  ///< the default button's frame, and two lines of relief
constexpr BYTE fadedAlpha = 90; ///< of an icon that can't be pressed

/// Puts a changed context back.
class SavedContext {
public:
    explicit SavedContext(HDC context) : context_{context}, level_{::SaveDC(context)} {}
    ~SavedContext() { ::RestoreDC(context_, level_); }
    SavedContext(const SavedContext&) = delete;
    SavedContext& operator=(const SavedContext&) = delete;

private:
    HDC context_;
    int level_;
};

/// A picture in memory, as the context shows it.
class Canvas {
public:
    Canvas(HDC like, int size)
        : context_{::CreateCompatibleDC(like)}, bitmap_{::CreateCompatibleBitmap(like, size, size)},
          old_{::SelectObject(context_, bitmap_)} {}
    ~Canvas() {
        ::SelectObject(context_, old_);
        ::DeleteObject(bitmap_);
        ::DeleteDC(context_);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    HDC context() const { return context_; }

private:
    HDC context_;
    HBITMAP bitmap_;
    HGDIOBJ old_;
};

/// Some of the way from one colour to another.
COLORREF tinted(COLORREF base, COLORREF towards) {
    const auto mix = [](int from, int to) { return static_cast<BYTE>(from + (to - from) / 6); };
    return RGB(mix(GetRValue(base), GetRValue(towards)), mix(GetGValue(base), GetGValue(towards)),
               mix(GetBValue(base), GetBValue(towards)));
}

COLORREF faceColour(const ButtonLook& look) {
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
    return look.isHovered && !look.isDisabled ? tinted(face, ::GetSysColor(COLOR_HIGHLIGHT)) : face;
}

void fill(HDC context, const RECT& area, COLORREF colour) {
    ::SetDCBrushColor(context, colour);
    ::FillRect(context, &area, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
}

/// Two lines from the top right corner by the top left one to the bottom left one, or the other two.
enum class Side { light, dark };

void drawEdge(HDC context, const RECT& area, Side side, int colourIndex) {
    const int right = area.right - 1, bottom = area.bottom - 1;
    ::SelectObject(context, ::GetStockObject(DC_PEN));
    ::SetDCPenColor(context, ::GetSysColor(colourIndex));
    const POINT light[] = {{right, area.top}, {area.left, area.top}, {area.left, bottom + 1}};
    const POINT dark[] = {{right, area.top}, {right, bottom}, {area.left - 1, bottom}};
    ::Polyline(context, side == Side::light ? light : dark, 3);
}

RECT shrunk(RECT area, int by) {
    ::InflateRect(&area, -by, -by);
    return area;
}

/// Three pens: light above and to the left, dark below and to the right, and a shade inside the dark.
void drawRelief(HDC context, const RECT& area, bool isSunken) {
    const RECT inside = shrunk(area, 1);
    drawEdge(context, area, Side::light, isSunken ? COLOR_3DDKSHADOW : COLOR_3DHILIGHT);
    drawEdge(context, area, Side::dark, isSunken ? COLOR_3DHILIGHT : COLOR_3DDKSHADOW);
    drawEdge(context, inside, isSunken ? Side::light : Side::dark, COLOR_3DSHADOW);
}

void drawBorder(HDC context, RECT area, const ButtonLook& look) {
    if (look.isDefault) {
        ::FrameRect(context, &area, ::GetSysColorBrush(COLOR_WINDOWFRAME));
        area = shrunk(area, 1);
    }
    if (look.hasBorder) drawRelief(context, area, look.isPressed);
}

void drawIcon(HDC context, POINT place, const ButtonLook& look) {
    const int size = look.iconSize;
    if (!look.isDisabled) {
        ::DrawIconEx(context, place.x, place.y, look.icon, size, size, 0, nullptr, DI_NORMAL);
        return;
    }
    const Canvas canvas{context, size};
    ::BitBlt(canvas.context(), 0, 0, size, size, context, place.x, place.y, SRCCOPY);
    ::DrawIconEx(canvas.context(), 0, 0, look.icon, size, size, 0, nullptr, DI_NORMAL);
    ::AlphaBlend(context, place.x, place.y, size, size, canvas.context(), 0, 0, size, size,
                 {AC_SRC_OVER, 0, fadedAlpha, 0});
}

void drawCaption(HDC context, RECT area, const ButtonLook& look) {
    ::SetBkMode(context, TRANSPARENT);
    ::SetTextColor(context, ::GetSysColor(look.isDisabled ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
    ::DrawTextW(context, look.caption.data(), static_cast<int>(look.caption.size()), &area,
                DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
}

int widthOf(HDC context, std::wstring_view text) {
    SIZE size{};
    ::GetTextExtentPoint32W(context, text.data(), static_cast<int>(text.size()), &size);
    return size.cx;
}

void drawContent(HDC context, RECT inside, const ButtonLook& look) {
    const int gap = look.icon && !look.caption.empty() ? std::max(3, look.iconSize / 4) : 0;
    const int iconRoom = (look.icon ? look.iconSize : 0) + gap;
    const int room = inside.right - inside.left;
    const int width = std::min(room, iconRoom + widthOf(context, look.caption));
    inside.left += (room - width) / 2;
    if (look.icon) drawIcon(context, {inside.left, (inside.top + inside.bottom - look.iconSize) / 2}, look);
    inside.left += iconRoom;
    drawCaption(context, inside, look);
}

} // namespace

void paintButton(HDC context, const RECT& area, const ButtonLook& look) {
    const SavedContext saved{context};
    if (look.font) ::SelectObject(context, look.font);
    fill(context, area, faceColour(look));
    drawBorder(context, area, look);
    RECT inside = shrunk(area, borderWidth);
    if (look.isPressed) ::OffsetRect(&inside, 1, 1);
    drawContent(context, inside, look);
    if (look.isFocused) {
        const RECT focus = shrunk(area, borderWidth);
        ::SetTextColor(context, ::GetSysColor(COLOR_BTNTEXT));
        ::SetBkColor(context, ::GetSysColor(COLOR_BTNFACE));
        ::DrawFocusRect(context, &focus);
    }
}

int iconSizeFor(int buttonHeight) {
    constexpr int sizes[] = {32, 24, 20, 16};
    const auto* fits = std::find_if(std::begin(sizes), std::end(sizes),
                                    [&](int size) { return size <= buttonHeight - 2 * borderWidth; });
    return fits == std::end(sizes) ? 16 : *fits;
}

} // namespace qx::controls
