#include "draw/PictureFrame.h"

#include <algorithm>
#include <cmath>

namespace qx::draw {
namespace {

bool isNear(const AcGePoint3d& p) {
    constexpr double farthest = 1e15;
    return std::abs(p.x) <= farthest && std::abs(p.y) <= farthest && std::abs(p.z) <= farthest;
}

} // namespace

PictureFrame::PictureFrame(const shape::Box& world) {
    if (world.isEmpty()) return;
    const double across = world.max.x - world.min.x, up = world.max.y - world.min.y;
    const double larger = std::max(across, up);
    // Below this, a size is rounding noise of the coordinates.
    const double smallest = 1e-12 * std::max({1.0, std::abs(world.max.x), std::abs(world.max.y)});
    const double margin = larger > smallest ? 0.03 * larger : 0.5;
    left_ = world.min.x - margin;
    top_ = world.max.y + margin;
    scale_ = std::min(width_ / (across + 2 * margin), height_ / (up + 2 * margin));
    width_ = (across + 2 * margin) * scale_;
    height_ = (up + 2 * margin) * scale_;
}

bool isDrawable(const shape::Segment& segment) { return isNear(segment.start) && isNear(segment.end); }

bool isDrawable(const shape::EllipticArc& arc) {
    return isNear(arc.centre) && isNear(arc.centre + arc.u) && isNear(arc.centre + arc.v) &&
           isNear(arc.end());
}

bool isDrawable(const shape::TextRun& run) {
    return isNear(run.origin) && std::ranges::all_of(run.inkCorners(), isNear);
}

bool isDrawable(const shape::Bezier& curve) {
    return std::ranges::all_of(curve.controls(), isNear, &shape::WeightedPoint::point);
}

} // namespace qx::draw
