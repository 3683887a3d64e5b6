// Whether what is seen lies inside a rectangle of the XY plane, or touches it: the two questions of window
// and crossing selection. The rectangle is closed; text counts as its filled ink box, arcs are curves and not
// discs, Bézier curves are cut until their hulls settle it, at last chords. A primitive with non-finite
// coordinates is outside.
#pragma once

#include "shape/Sink.h"

namespace qx::shape {

class QX_HOST_API WindowSink final : public Sink {
public:
    /// Any two opposite corners; their Z does not matter.
    WindowSink(const AcGePoint3d& corner, const AcGePoint3d& opposite);

    /// True when everything seen is inside; false when nothing was seen.
    bool allInside() const { return hasInside_ && !hasOutside_; }
    /// True when something seen lies inside, crosses or meets the rectangle.
    bool anyTouches() const { return hasTouching_; }

    void segment(const Segment& segment) override;
    void arc(const EllipticArc& arc) override;
    void text(const TextRun& run) override;
    void endless(const Endless& line) override;
    void bezier(const Bezier& curve) override;
    /// True when both answers are settled.
    bool isFull() const override { return hasTouching_ && hasOutside_; }

private:
    bool contains(const AcGePoint3d& p) const;
    bool overlaps(const Box& box) const;
    bool isSplitFrom(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& other) const;
    bool isCrossedBy(const EllipticArc& arc, unsigned axis, double border) const;
    bool isCrossedBy(const EllipticArc& arc) const;
    void note(bool isInside, bool touches);

    Box window_;
    bool hasInside_ = false, hasOutside_ = false, hasTouching_ = false;
};

} // namespace qx::shape
