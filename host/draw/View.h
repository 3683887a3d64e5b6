// A window onto the world's XY plane: where it looks, and how many pixels a drawing unit takes. Screen
// coordinates are pixels from the top left corner, y downwards.
#pragma once

#include "gepnt2d.h"
#include "shape/Primitives.h"

namespace qx::draw {

class QX_HOST_API View {
public:
    /// Looks at the origin, one pixel a unit. Sizes below one pixel count as one.
    View(int width, int height);

    int width() const { return width_; }
    int height() const { return height_; }
    /// Pixels per drawing unit; always positive and finite.
    double scale() const { return scale_; }
    /// Side of a pixel in drawing units.
    double pixel() const { return 1 / scale_; }

    AcGePoint2d toScreen(const AcGePoint3d& world) const {
        return {(world.x - centre_.x) * scale_ + width_ * 0.5,
                (centre_.y - world.y) * scale_ + height_ * 0.5};
    }
    /// With z = 0.
    AcGePoint3d toWorld(const AcGePoint2d& screen) const {
        return {centre_.x + (screen.x - width_ * 0.5) / scale_,
                centre_.y - (screen.y - height_ * 0.5) / scale_, 0};
    }
    /// What the screen rectangle shows; without limits in z.
    shape::Box worldOf(double left, double top, double right, double bottom) const;

    /// The centre stays where it is.
    void resize(int width, int height);
    /// What is seen moves along by so many pixels.
    void pan(double right, double down);
    /// The point under the cursor stays there. As far as numbers can still tell neighbouring pixels apart.
    void zoom(double factor, const AcGePoint2d& about);
    /// Shows the box with a margin of 3 %. An empty box shows the surroundings of the origin, one without
    /// size the surroundings of its point. Coordinates beyond 1e15 are cut off there.
    void fit(const shape::Box& box);

private:
    void lookAt(const AcGePoint2d& centre, double scale);

    int width_, height_;
    AcGePoint2d centre_;
    double scale_ = 1;
};

} // namespace qx::draw
