// Pixels in memory, and lines drawn into them: what a window shows before it is on the screen. A pixel is
// 0x00RRGGBB, rows run from top to bottom without gaps. Everything is cut off at the clip rectangle; sizes
// and positions may be anything, also infinite or no numbers.
#pragma once

#include "gepnt2d.h"
#include "qxexport.h"

#include <cstdint>
#include <span>
#include <vector>

namespace qx::draw {

using Colour = std::uint32_t;

/// Right and bottom edge are outside.
struct PixelRect {
    int left = 0, top = 0, right = 0, bottom = 0;

    bool isEmpty() const { return left >= right || top >= bottom; }
    int width() const { return right - left; }
    int height() const { return bottom - top; }
    QX_HOST_API PixelRect cutTo(const PixelRect& other) const;
    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

class QX_HOST_API Raster {
public:
    /// Draws into memory of the caller's, width * height pixels.
    Raster(Colour* pixels, int width, int height);

    PixelRect bounds() const { return {0, 0, width_, height_}; }
    const PixelRect& clip() const { return clip_; }
    void setClip(const PixelRect& clip) { clip_ = clip.cutTo(bounds()); }

    Colour at(int x, int y) const { return pixels_[index(x, y)]; }
    void fill(const PixelRect& rectangle, Colour colour);
    /// Mixes the colour in; `opacity` 0 to 255.
    void tint(const PixelRect& rectangle, Colour colour, int opacity);
    void point(const AcGePoint2d& at, Colour colour);
    /// Both ends belong to it.
    void line(const AcGePoint2d& from, const AcGePoint2d& to, Colour colour);
    /// Six pixels on, four off. `phase` is how far along the dashes it begins, and is carried on.
    void dashes(const AcGePoint2d& from, const AcGePoint2d& to, Colour colour, int& phase);

    /// Moves the whole picture by so many pixels, whatever the clip rectangle. Returns what has to be drawn
    /// anew: at most two rectangles, which hold what they held before.
    std::vector<PixelRect> scroll(int right, int down);

private:
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x);
    }
    /// False when nothing of the line is inside; else its ends are.
    bool cut(AcGePoint2d& from, AcGePoint2d& to) const;
    template <class Plot> void walk(AcGePoint2d from, AcGePoint2d to, Plot&& plot);

    Colour* pixels_;
    int width_, height_;
    PixelRect clip_;
};

} // namespace qx::draw
