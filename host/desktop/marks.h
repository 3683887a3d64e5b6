// What is drawn over the picture at the cursor: crosshair and pick box, rectangles, rubber bands, and the
// signs of object snaps. Everything grows with the screen's dots per inch.
#pragma once

#include "draw/Raster.h"
#include "draw/palette.h"
#include "ed/InputSource.h"
#include "ed/objectSnap.h"

#include <string>

namespace qx::desktop {

/// As a drafter calls it.
std::string nameOf(ed::SnapKind kind);

class Marks {
public:
    Marks(draw::Raster& raster, draw::Ground ground, int dotsPerInch)
        : raster_{raster}, ground_{ground}, unit_{dotsPerInch / 96.0} {}

    /// To the right a window, blue; to the left a crossing, green and dashed.
    void rectangle(const AcGePoint2d& first, const AcGePoint2d& second);
    void rubberBand(const AcGePoint2d& from, const AcGePoint2d& to);
    void snap(ed::SnapKind kind, const AcGePoint2d& at);
    /// Where points are asked for a crosshair, where objects are a pick box; both between commands.
    void cursor(const AcGePoint2d& at, ed::Ask ask, int pickBox);

private:
    void polyline(std::initializer_list<AcGePoint2d> points, draw::Colour colour);
    void square(const AcGePoint2d& at, double half, draw::Colour colour);

    draw::Raster& raster_;
    draw::Ground ground_;
    double unit_; ///< pixels
};

} // namespace qx::desktop
