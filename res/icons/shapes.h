// What icons are drawn from; each shape knows which points lie inside it.
#pragma once

#include "Canvas.h"

#include <algorithm>
#include <cmath>

namespace qx::icons {

struct Box {
    double left, top, right, bottom;
    bool contains(Point p) const { return p.x > left && p.x < right && p.y > top && p.y < bottom; }
    Box shrunk(double by) const { return {left + by, top + by, right - by, bottom - by}; }
};

struct RoundedBox {
    Box box;
    double radius;
    bool contains(Point p) const {
        const Box core = box.shrunk(radius);
        const double x = p.x - std::clamp(p.x, core.left, core.right);
        const double y = p.y - std::clamp(p.y, core.top, core.bottom);
        return x * x + y * y < radius * radius;
    }
};

/// A box about a centre, that runs along a direction of length 1.
struct TurnedBox {
    Point centre, along;
    double length, width;
    bool contains(Point p) const {
        const double x = p.x - centre.x, y = p.y - centre.y;
        const double ahead = x * along.x + y * along.y, aside = y * along.x - x * along.y;
        return std::abs(ahead) * 2 < length && std::abs(aside) * 2 < width;
    }
    TurnedBox shrunk(double by) const { return {centre, along, length - 2 * by, width - 2 * by}; }
};

/// A disc when the inner radius is 0.
struct Ring {
    Point centre;
    double inner, outer;
    bool contains(Point p) const {
        const double x = p.x - centre.x, y = p.y - centre.y, square = x * x + y * y;
        return square >= inner * inner && square < outer * outer;
    }
};

} // namespace qx::icons
