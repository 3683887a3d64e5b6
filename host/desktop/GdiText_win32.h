// Text drawn by the system into a bitmap, as wide as the host measures it, whatever the font.
#pragma once

#include "draw/DisplayList.h"

#include <map>
#include <windows.h>

namespace qx::desktop {

class GdiText final : public draw::TextPainter {
public:
    /// Draws into the bitmap that is selected in `context`; both must stay.
    explicit GdiText(HDC context);
    ~GdiText() override;
    GdiText(const GdiText&) = delete;
    GdiText& operator=(const GdiText&) = delete;

    void paint(const shape::TextRun& run, const draw::View& view, const draw::PixelRect& clip,
               draw::Colour colour) override;

private:
    void clipTo(const draw::PixelRect& clip);
    void useFont(int height);

    HDC context_;
    HGDIOBJ oldFont_;
    std::map<int, HFONT> fonts_; ///< by their height
    draw::PixelRect clip_;
};

} // namespace qx::desktop
