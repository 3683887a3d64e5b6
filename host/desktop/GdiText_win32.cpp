#include "desktop/GdiText_win32.h"

#include "draw/textStretches.h"
#include "os/encoding.h"

#include <algorithm>
#include <cmath>

namespace qx::desktop {
namespace {

constexpr int largestFont = 400; // pixels; what is larger is stretched

COLORREF systemColour(draw::Colour colour) {
    return RGB(colour >> 16 & 0xFF, colour >> 8 & 0xFF, colour & 0xFF);
}

} // namespace

GdiText::GdiText(HDC context) : context_{context}, oldFont_{::GetCurrentObject(context, OBJ_FONT)} {
    ::SetGraphicsMode(context, GM_ADVANCED);
    ::SetBkMode(context, TRANSPARENT);
    ::SetTextAlign(context, TA_BASELINE | TA_LEFT);
}

GdiText::~GdiText() {
    ::SelectObject(context_, oldFont_);
    for (const auto& [height, font] : fonts_) ::DeleteObject(font);
}

void GdiText::clipTo(const draw::PixelRect& clip) {
    if (clip == clip_) return;
    clip_ = clip;
    const HRGN region = ::CreateRectRgn(clip.left, clip.top, clip.right, clip.bottom);
    ::SelectClipRgn(context_, region);
    ::DeleteObject(region);
}

void GdiText::useFont(int height) {
    HFONT& font = fonts_[height];
    if (!font)
        font = ::CreateFontW(-height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_TT_PRECIS,
                             CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, DEFAULT_PITCH, L"Microsoft YaHei");
    ::SelectObject(context_, font);
}

// A font of a whole number of pixels, stretched by the little that is missing, turned and slanted.
void GdiText::paint(const shape::TextRun& run, const draw::View& view, const draw::PixelRect& clip,
                    draw::Colour colour) {
    const AcGePoint2d origin = view.toScreen(run.origin);
    const AcGeVector2d along = view.toScreen(run.origin + run.along) - origin,
                       up = view.toScreen(run.origin + run.up) - origin;
    clipTo(clip);
    ::SetTextColor(context_, systemColour(colour));
    for (const draw::TextStretch& stretch : draw::stretchesOf(run)) {
        const double size =
            up.length() * (stretch.isFullWidth ? draw::sizeOfFullWidth : draw::sizeOfCapitals);
        const int height = std::clamp(static_cast<int>(std::lround(size)), 1, largestFont);
        useFont(height);
        const std::wstring text = os::toWide(os::toUtf8(stretch.characters));
        const int count = static_cast<int>(text.size());
        SIZE natural{};
        if (!::GetTextExtentPoint32W(context_, text.c_str(), count, &natural) || natural.cx <= 0) continue;
        const AcGePoint2d at = origin + along * stretch.begin;
        const AcGeVector2d x = along * (stretch.advance / natural.cx),
                           y = up * (-size / height / up.length());
        const auto narrow = [](double value) { return static_cast<FLOAT>(value); };
        const XFORM place{narrow(x.x), narrow(x.y), narrow(y.x), narrow(y.y), narrow(at.x), narrow(at.y)};
        ::SetWorldTransform(context_, &place);
        ::ExtTextOutW(context_, 0, 0, 0, nullptr, text.c_str(), static_cast<UINT>(count), nullptr);
    }
    ::ModifyWorldTransform(context_, nullptr, MWT_IDENTITY);
    ::GdiFlush(); // others write into the same pixels
}

} // namespace qx::desktop
