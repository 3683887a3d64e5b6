#include "draw/View.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qx::draw {
namespace {

constexpr double farthest = 1e15;

double cutOff(double coordinate) { return std::clamp(coordinate, -farthest, farthest); }

} // namespace

View::View(int width, int height) : width_{std::max(width, 1)}, height_{std::max(height, 1)} {}

shape::Box View::worldOf(double left, double top, double right, double bottom) const {
    constexpr double everywhere = std::numeric_limits<double>::infinity();
    const AcGePoint3d low = toWorld({left, bottom}), high = toWorld({right, top});
    return {{low.x, low.y, -everywhere}, {high.x, high.y, everywhere}};
}

void View::resize(int width, int height) {
    width_ = std::max(width, 1);
    height_ = std::max(height, 1);
}

void View::pan(double right, double down) {
    lookAt({centre_.x - right / scale_, centre_.y + down / scale_}, scale_);
}

void View::zoom(double factor, const AcGePoint2d& about) {
    if (!(factor > 0) || !std::isfinite(factor)) return;
    const AcGePoint3d fixed = toWorld(about);
    lookAt(centre_, scale_ * factor);
    const AcGePoint3d moved = toWorld(about);
    lookAt({centre_.x + fixed.x - moved.x, centre_.y + fixed.y - moved.y}, scale_);
}

void View::fit(const shape::Box& box) {
    constexpr double filled = 0.94;
    if (box.isEmpty()) return lookAt({0, 0}, 1);
    const AcGePoint2d low{cutOff(box.min.x), cutOff(box.min.y)}, high{cutOff(box.max.x), cutOff(box.max.y)};
    const double across = high.x - low.x, up = high.y - low.y;
    const double scale =
        filled * std::min(across > 0 ? width_ / across : farthest, up > 0 ? height_ / up : farthest);
    const bool isPoint = !(across > 0) && !(up > 0);
    lookAt({(low.x + high.x) / 2, (low.y + high.y) / 2}, isPoint ? 1 : scale);
}

// A pixel has to be larger than the rounding of the coordinates that it lies at, and a screen smaller than
// what numbers reach.
void View::lookAt(const AcGePoint2d& centre, double scale) {
    constexpr double rounding = 1e-13, smallestPixel = 1e-12;
    centre_ = {cutOff(centre.x), cutOff(centre.y)};
    const double size = std::max(std::abs(centre_.x), std::abs(centre_.y));
    scale_ = std::clamp(scale, 1 / farthest, 1 / std::max(smallestPixel, size * rounding));
}

} // namespace qx::draw
