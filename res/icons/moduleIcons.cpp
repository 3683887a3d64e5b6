#include "moduleIcons.h"

#include "IconFile.h"
#include "shapes.h"

#include <cmath>

namespace qx::icons {
namespace {

constexpr Colour barEdge{0x4A, 0x5D, 0x75}, barFace{0xA8, 0xBE, 0xD8}, guideColour{0xE8, 0x6A, 0x0C};
constexpr Colour tileColour{0x2B, 0x6C, 0xB8}, tileBar{0xF4, 0xF8, 0xFC}, tileGuide{0xFF, 0xB3, 0x4D};
constexpr Colour cancelColour{0xD6, 0x3A, 0x3A}, pointColour{0xFF, 0xF4, 0xE8};

constexpr double diagonal = 0.70710678118654752;
constexpr Point rising{diagonal, -diagonal}, falling{diagonal, diagonal};

/// Where the parts of a picture end, in whole pixels, chosen for each size by eye.
struct Grid {
    int size;
    int border;   ///< of a bar
    int guide;    ///< width of a guide line; even, as it also runs through the middle
    int margin;   ///< left free on each side
    int bar, gap; ///< thickness of each of two bars, and between them
    int space;    ///< between a guide line and the bar's edge that is meant
    int shortBar; ///< length of the shorter one; the longer fills the room there is
    int spreadOuter, spreadMiddle, spreadGap; ///< three bars side by side
};
constexpr Grid grids[] = {
    {16, 1, 2, 1, 5, 2, 1, 7, 3, 4, 3},
    {20, 1, 2, 1, 6, 2, 1, 9, 4, 4, 3},
    {24, 1, 2, 2, 7, 4, 1, 11, 4, 4, 4},
    {32, 2, 4, 2, 10, 4, 2, 14, 6, 6, 5},
};

const Grid& gridOf(const Canvas& canvas) { return *std::ranges::find(grids, canvas.size(), &Grid::size); }

/// Pictures are thought out with their guide at the left; the others are turned copies.
enum class Side { left, top, right, bottom };

Box placed(const Box& box, Side side, int size) {
    switch (side) {
    case Side::left:
        return box;
    case Side::right:
        return {size - box.right, box.top, size - box.left, box.bottom};
    case Side::top:
        return {box.top, box.left, box.bottom, box.right};
    case Side::bottom:
        return {box.top, size - box.right, box.bottom, size - box.left};
    }
    return box;
}

template <typename Shape> void drawBar(Canvas& canvas, const Shape& outline, double border) {
    canvas.fill(outline, barEdge);
    canvas.fill(outline.shrunk(border), barFace);
}

void drawBar(Canvas& canvas, const Box& outline) { drawBar(canvas, outline, gridOf(canvas).border); }

/// The first row of the upper of two bars.
int firstBar(const Grid& grid) { return (grid.size - 2 * grid.bar - grid.gap) / 2; }

void drawEdge(Canvas& canvas, Side side) {
    const Grid& grid = gridOf(canvas);
    const int start = grid.margin + grid.guide + grid.space, end = grid.size - grid.margin;
    const int upper = firstBar(grid), lower = upper + grid.bar + grid.gap;
    const Box guide(grid.margin, grid.margin, grid.margin + grid.guide, end);
    const Box longBar(start, upper, end, upper + grid.bar);
    const Box shortBar(start, lower, start + grid.shortBar, lower + grid.bar);
    canvas.fill(placed(guide, side, grid.size), guideColour);
    for (const Box& bar : {longBar, shortBar}) drawBar(canvas, placed(bar, side, grid.size));
}

Box middleGuide(const Grid& grid) {
    return Box(grid.size / 2 - grid.guide / 2, 0, grid.size / 2 + grid.guide / 2, grid.size);
}

void drawCentre(Canvas& canvas, Side side) {
    const Grid& grid = gridOf(canvas);
    const int upper = firstBar(grid), lower = upper + grid.bar + grid.gap;
    const int inset = (grid.size - grid.shortBar) / 2;
    const Box longBar(grid.margin, upper, grid.size - grid.margin, upper + grid.bar);
    const Box shortBar(inset, lower, grid.size - inset, lower + grid.bar);
    for (const Box& bar : {longBar, shortBar}) drawBar(canvas, placed(bar, side, grid.size));
    canvas.fill(placed(middleGuide(grid), side, grid.size), guideColour);
}

void drawBothCentres(Canvas& canvas) {
    const Grid& grid = gridOf(canvas);
    const double inset = grid.size / 4 - 1;
    drawBar(canvas, Box(inset, inset, grid.size - inset, grid.size - inset));
    for (const Side side : {Side::left, Side::top})
        canvas.fill(placed(middleGuide(grid), side, grid.size), guideColour);
}

void drawSpread(Canvas& canvas, Side side) {
    const Grid& grid = gridOf(canvas);
    const int outer = grid.spreadOuter, inner = grid.spreadMiddle, gap = grid.spreadGap;
    const int first = (grid.size - 2 * (outer + gap) - inner) / 2;
    const int second = first + outer + gap, third = second + inner + gap;
    const int middle = grid.size / 2, tall = middle - grid.margin, low = tall - grid.size / 8;
    const auto part = [&](int start, int width, int half) {
        return placed(Box(start, middle - half, start + width, middle + half), side, grid.size);
    };
    for (const int start : {first, third}) drawBar(canvas, part(start, outer, tall));
    drawBar(canvas, part(second, inner, low));
    for (const int start : {first + outer, second + inner})
        canvas.fill(part(start, gap, grid.guide / 2), guideColour);
}

/// Across a slope of 1 pixels lie in steps of half their diagonal: what ends on one looks alike all along.
/// Rounded up, since the first and the last step are half blur.
double inDiagonalSteps(int pixels) { return std::ceil(pixels / diagonal) * diagonal; }

void drawLine(Canvas& canvas) {
    const Grid& grid = gridOf(canvas);
    const double guide = inDiagonalSteps(grid.guide), bar = inDiagonalSteps(grid.bar);
    const double border = inDiagonalSteps(grid.border), space = border;
    const double start = -inDiagonalSteps(grid.size * 9 / 32);
    const auto aboveDiagonal = [&](double distance) {
        return Point{grid.size / 2.0 - distance * diagonal, grid.size / 2.0 - distance * diagonal};
    };
    const Point guideCentre = aboveDiagonal(start + guide / 2),
                barCentre = aboveDiagonal(start + guide + space + bar / 2);
    canvas.fill(TurnedBox{guideCentre, rising, grid.size * 0.92, guide}, guideColour);
    drawBar(canvas, TurnedBox{barCentre, rising, grid.size * 0.72, bar}, border);
}

void drawPoint(Canvas& canvas) {
    const Grid& grid = gridOf(canvas);
    const int inset = grid.size / 8, barEnd = grid.margin + grid.bar;
    const double dot = 3 * grid.size / 16.0, radius = 12 * grid.size / 16.0, half = grid.guide / 2;
    const Point apex{grid.size / 2.0, barEnd + grid.space + dot};
    drawBar(canvas, Box(inset, grid.margin, grid.size - inset, barEnd));
    canvas.fill(Ring{{apex.x, apex.y + radius}, radius - half, radius + half}, guideColour);
    canvas.fill(Ring{apex, 0, dot}, guideColour);
    canvas.fill(Ring{apex, 0, dot / 2}, pointColour);
}

void drawCancel(Canvas& canvas) {
    const double size = canvas.size(), middle = size / 2;
    for (const Point along : {rising, falling})
        canvas.fill(TurnedBox{{middle, middle}, along, size * 0.95, size * 0.16}, cancelColour);
}

void drawProduct(Canvas& canvas) {
    const Grid& grid = gridOf(canvas);
    const int size = grid.size, inset = size / 8 + 1, end = size - inset;
    const int start = inset + grid.guide + grid.space, thickness = (end - inset - grid.gap) / 2;
    canvas.fill(RoundedBox{Box(0, 0, size, size), size * 0.1875}, tileColour);
    canvas.fill(Box(inset, inset, inset + grid.guide, end), tileGuide);
    canvas.fill(Box(start, inset, end, inset + thickness), tileBar);
    canvas.fill(Box(start, end - thickness, end - size / 5, end), tileBar);
}

constexpr ModuleIcon icons[] = {
    {"groupAlignment", drawProduct},
    {"alignLeft", [](Canvas& canvas) { drawEdge(canvas, Side::left); }},
    {"alignRight", [](Canvas& canvas) { drawEdge(canvas, Side::right); }},
    {"alignTop", [](Canvas& canvas) { drawEdge(canvas, Side::top); }},
    {"alignBottom", [](Canvas& canvas) { drawEdge(canvas, Side::bottom); }},
    {"centreHorizontally", [](Canvas& canvas) { drawCentre(canvas, Side::left); }},
    {"centreVertically", [](Canvas& canvas) { drawCentre(canvas, Side::top); }},
    {"alignCentre", drawBothCentres},
    {"distributeHorizontally", [](Canvas& canvas) { drawSpread(canvas, Side::left); }},
    {"distributeVertically", [](Canvas& canvas) { drawSpread(canvas, Side::top); }},
    {"alignToLine", drawLine},
    {"alignAtPoint", drawPoint},
    {"cancel", drawCancel},
};

} // namespace

std::span<const ModuleIcon> moduleIcons() { return icons; }

std::string iconFile(const ModuleIcon& icon) {
    std::vector<Canvas> images;
    for (const Grid& grid : grids) icon.draw(images.emplace_back(grid.size));
    return iconFile(images);
}

} // namespace qx::icons
