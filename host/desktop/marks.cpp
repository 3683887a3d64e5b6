#include "desktop/marks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace qx::desktop {
namespace {

using draw::Colour;
using draw::Ground;

constexpr Colour windowBlue = 0x3D7BD9, crossingGreen = 0x3DA35D, snapColour = 0xF5A623;
constexpr int veil = 48; // of 255

AcGePoint2d moved(const AcGePoint2d& p, double right, double down) { return {p.x + right, p.y + down}; }

} // namespace

std::string nameOf(ed::SnapKind kind) {
    using enum ed::SnapKind;
    switch (kind) {
    case endpoint:
        return "端点";
    case midpoint:
        return "中点";
    case centre:
        return "圆心";
    case quadrant:
        return "象限点";
    case intersection:
        return "交点";
    case insertion:
        return "插入点";
    case nearest:
        break;
    }
    return "最近点";
}

void Marks::polyline(std::initializer_list<AcGePoint2d> points, Colour colour) {
    for (auto at = points.begin(); at + 1 < points.end(); ++at) raster_.line(at[0], at[1], colour);
}

void Marks::square(const AcGePoint2d& at, double half, Colour colour) {
    polyline({moved(at, -half, -half), moved(at, half, -half), moved(at, half, half), moved(at, -half, half),
              moved(at, -half, -half)},
             colour);
}

void Marks::rectangle(const AcGePoint2d& first, const AcGePoint2d& second) {
    const bool isCrossing = second.x < first.x;
    const Colour colour = isCrossing ? crossingGreen : windowBlue;
    const auto pixel = [](double value) { return static_cast<int>(std::clamp(value, -1e6, 1e6)); };
    const auto [left, right] = std::minmax(first.x, second.x);
    const auto [top, bottom] = std::minmax(first.y, second.y);
    raster_.tint({pixel(left), pixel(top), pixel(right), pixel(bottom)}, colour, veil);
    int phase = 0;
    const std::array<AcGePoint2d, 5> corners{
        {first, {second.x, first.y}, second, {first.x, second.y}, first}};
    for (std::size_t i = 0; i + 1 < corners.size(); ++i)
        isCrossing ? raster_.dashes(corners[i], corners[i + 1], colour, phase)
                   : raster_.line(corners[i], corners[i + 1], colour);
}

void Marks::rubberBand(const AcGePoint2d& from, const AcGePoint2d& to) {
    int phase = 0;
    raster_.dashes(from, to, draw::colourOn(ground_, 7), phase);
}

// Each kind has its own sign, twice as thick as a line.
void Marks::snap(ed::SnapKind kind, const AcGePoint2d& at) {
    using enum ed::SnapKind;
    for (const double thickness : {0.0, 1.0}) {
        const double r = 6 * unit_ - thickness;
        const AcGePoint2d top = moved(at, 0, -r), right = moved(at, r, 0), bottom = moved(at, 0, r),
                          left = moved(at, -r, 0), topLeft = moved(at, -r, -r), topRight = moved(at, r, -r),
                          bottomLeft = moved(at, -r, r), bottomRight = moved(at, r, r);
        if (kind == endpoint) square(at, r, snapColour);
        if (kind == midpoint) polyline({top, bottomRight, bottomLeft, top}, snapColour);
        if (kind == quadrant) polyline({top, right, bottom, left, top}, snapColour);
        if (kind == nearest) polyline({topLeft, topRight, bottomLeft, bottomRight, topLeft}, snapColour);
        if (kind == insertion)
            polyline({top, topRight, right, at, bottom, bottomLeft, left, at, top}, snapColour);
        if (kind == intersection) {
            raster_.line(topLeft, bottomRight, snapColour);
            raster_.line(topRight, bottomLeft, snapColour);
        }
        constexpr int sides = 24;
        for (int i = 0; kind == centre && i < sides; ++i) {
            const double from = 2 * std::numbers::pi * i / sides, to = 2 * std::numbers::pi * (i + 1) / sides;
            raster_.line(moved(at, r * std::cos(from), r * std::sin(from)),
                         moved(at, r * std::cos(to), r * std::sin(to)), snapColour);
        }
    }
}

void Marks::cursor(const AcGePoint2d& at, ed::Ask ask, int pickBox) {
    const Colour colour = draw::colourOn(ground_, 7);
    const bool picks = ask == ed::Ask::command || ask == ed::Ask::selection || ask == ed::Ask::entity;
    const bool crosses = ask != ed::Ask::selection && ask != ed::Ask::entity;
    const double box = picks ? pickBox * unit_ : 0, arm = 40 * unit_;
    if (picks) square(at, box, colour);
    if (!crosses) return;
    raster_.line(moved(at, -arm, 0), moved(at, -box, 0), colour);
    raster_.line(moved(at, box, 0), moved(at, arm, 0), colour);
    raster_.line(moved(at, 0, -arm), moved(at, 0, -box), colour);
    raster_.line(moved(at, 0, box), moved(at, 0, arm), colour);
}

} // namespace qx::desktop
