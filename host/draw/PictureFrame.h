// From the world's XY plane to a picture: scaled to fit 1600 x 1200 units with a margin of 3 %, counted from
// the top left, y downwards. A unit is one pixel at the picture's own size, so that text and lines have sizes
// that renderers are made for, whatever the drawing's units are; large coordinates lose nothing.
#pragma once

#include "shape/Bezier.h"

#include "gepnt2d.h"

namespace qx::draw {

class QX_HOST_API PictureFrame {
public:
    /// An empty box gives an empty picture of full size, a box without size a picture with its point in the
    /// middle.
    explicit PictureFrame(const shape::Box& world);

    double width() const { return width_; }
    double height() const { return height_; }
    /// Picture units per drawing unit.
    double scale() const { return scale_; }

    /// What the picture shows, margin included.
    shape::Box world() const {
        return {{left_, top_ - height_ / scale_, 0}, {left_ + width_ / scale_, top_, 0}};
    }
    AcGePoint2d toPicture(const AcGePoint3d& p) const {
        return {(p.x - left_) * scale_, (top_ - p.y) * scale_};
    }
    AcGeVector2d toPicture(const AcGeVector3d& v) const { return {v.x * scale_, -v.y * scale_}; }

private:
    double left_ = 0, top_ = 0, scale_ = 1, width_ = 1600, height_ = 1200;
};

/// True when no coordinate is infinite, not a number, or beyond 1e15: what a picture shows.
QX_HOST_API bool isDrawable(const shape::Segment& segment);
QX_HOST_API bool isDrawable(const shape::EllipticArc& arc);
QX_HOST_API bool isDrawable(const shape::TextRun& run);
QX_HOST_API bool isDrawable(const shape::Bezier& curve);

} // namespace qx::draw
