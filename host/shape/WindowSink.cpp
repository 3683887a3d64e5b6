#include "shape/WindowSink.h"

#include "shape/ExtentsSink.h"
#include "shape/plane.h"

#include <algorithm>
#include <cmath>

namespace qx::shape {
namespace {

template <class Primitive> Box boxOf(const Primitive& primitive, void (ExtentsSink::*see)(const Primitive&)) {
    ExtentsSink sink;
    (sink.*see)(primitive);
    return sink.box();
}

} // namespace

WindowSink::WindowSink(const AcGePoint3d& corner, const AcGePoint3d& opposite) {
    window_.add({corner.x, corner.y, 0});
    window_.add({opposite.x, opposite.y, 0});
}

bool WindowSink::contains(const AcGePoint3d& p) const {
    return p.x >= window_.min.x && p.x <= window_.max.x && p.y >= window_.min.y && p.y <= window_.max.y;
}

bool WindowSink::overlaps(const Box& box) const {
    return box.min.x <= window_.max.x && box.max.x >= window_.min.x && box.min.y <= window_.max.y &&
           box.max.y >= window_.min.y;
}

/// True when the line through a and b has the whole window strictly on one side and `other` on the other side
/// or on the line.
bool WindowSink::isSplitFrom(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& other) const {
    const AcGeVector2d way = inPlane(b - a);
    double least = INFINITY, most = -INFINITY;
    for (const double x : {window_.min.x, window_.max.x})
        for (const double y : {window_.min.y, window_.max.y}) {
            const double side = cross(way, {x - a.x, y - a.y});
            least = std::min(least, side);
            most = std::max(most, side);
        }
    const double otherSide = cross(way, inPlane(other - a));
    return (least > 0 && otherSide <= 0) || (most < 0 && otherSide >= 0);
}

void WindowSink::note(bool isInside, bool touches) {
    (isInside ? hasInside_ : hasOutside_) = true;
    hasTouching_ = hasTouching_ || touches;
}

void WindowSink::segment(const Segment& segment) {
    if (!isFinite(segment)) return note(false, false);
    const AcGePoint3d &a = segment.start, &b = segment.end;
    const bool startsInside = contains(a), endsInside = contains(b);
    const bool touches = startsInside || endsInside ||
                         (overlaps(boxOf(segment, &ExtentsSink::segment)) && !isSplitFrom(a, b, a));
    note(startsInside && endsInside, touches);
}

/// Whether the arc meets one border line of the window within the window: solves u cos t + v sin t = distance
/// along the axis.
bool WindowSink::isCrossedBy(const EllipticArc& arc, unsigned axis, double border) const {
    const double u = arc.u[axis], v = arc.v[axis], distance = border - arc.centre[axis];
    const double radius = std::hypot(u, v);
    if (!(std::abs(distance) <= radius) || radius == 0) return false;
    const double along = distance / radius, across = std::sqrt(std::max(0.0, 1 - along * along));
    const unsigned other = 1 - axis;
    for (const double side : {across, -across}) {
        const double c = (u * along - v * side) / radius, s = (v * along + u * side) / radius;
        const double place = arc.at(c, s)[other];
        if (arc.contains(c, s) && place >= window_.min[other] && place <= window_.max[other]) return true;
    }
    return false;
}

bool WindowSink::isCrossedBy(const EllipticArc& arc) const {
    return isCrossedBy(arc, 0, window_.min.x) || isCrossedBy(arc, 0, window_.max.x) ||
           isCrossedBy(arc, 1, window_.min.y) || isCrossedBy(arc, 1, window_.max.y);
}

void WindowSink::arc(const EllipticArc& arc) {
    if (!isFinite(arc)) return note(false, false);
    const Box box = boxOf(arc, &ExtentsSink::arc);
    const bool isInside = contains(box.min) && contains(box.max);
    const bool touches =
        isInside || contains(arc.start()) || contains(arc.end()) || (overlaps(box) && isCrossedBy(arc));
    note(isInside, touches);
}

void WindowSink::bezier(const Bezier& curve) {
    if (!isFinite(curve)) return note(false, false);
    const double tolerance = flatness * sizeOf(hullBox(curve));
    subdivide(curve, [&](const Bezier& piece, bool isSmall) {
        const Box box = hullBox(piece);
        const bool isInside = contains(box.min) && contains(box.max);
        if (isInside || !overlaps(box))
            note(isInside, isInside);
        else if (!isSmall && bendOf(piece) > tolerance)
            return !isFull();
        else
            segment({piece.start(), piece.end()});
        return false;
    });
}

void WindowSink::text(const TextRun& run) {
    if (run.extent.blank) return;
    if (!isFinite(run)) return note(false, false);
    const Box box = boxOf(run, &ExtentsSink::text);
    const auto corners = run.inkCorners();
    bool touches = overlaps(box);
    for (std::size_t i = 0; i < 4 && touches; ++i)
        touches = !isSplitFrom(corners[i], corners[(i + 1) % 4], corners[(i + 2) % 4]);
    note(contains(box.min) && contains(box.max), touches);
}

void WindowSink::endless(const Endless& line) {
    note(false, isFinite(line) && partWithin(window_, line).has_value());
}

} // namespace qx::shape
