// The tight world box around everything seen. Blank text adds nothing; infinite coordinates make the box
// infinite, coordinates that are not numbers are passed over.
#pragma once

#include "shape/Sink.h"

namespace qx::shape {

class ExtentsSink final : public Sink {
public:
    const Box& box() const { return box_; }

    void segment(const Segment& segment) override {
        box_.add(segment.start);
        box_.add(segment.end);
    }

    // Along one axis the arc reaches centre +- hypot(u, v) at the parameters with direction +-(u, v); where
    // the arc does not pass those, its ends are the extremes.
    void arc(const EllipticArc& arc) override {
        box_.add(arc.start());
        if (!arc.isClosed()) box_.add(arc.end());
        reach(arc, arc.centre.x, arc.u.x, arc.v.x, box_.min.x, box_.max.x);
        reach(arc, arc.centre.y, arc.u.y, arc.v.y, box_.min.y, box_.max.y);
        reach(arc, arc.centre.z, arc.u.z, arc.v.z, box_.min.z, box_.max.z);
    }

    void bezier(const Bezier& curve) override { add(box_, curve); }

    void text(const TextRun& run) override {
        if (run.extent.blank) return;
        for (const AcGePoint3d& corner : run.inkCorners()) box_.add(corner);
    }

private:
    static void reach(const EllipticArc& arc, double centre, double u, double v, double& min, double& max) {
        const double radius = std::sqrt(u * u + v * v);
        const double top = arc.contains(u, v) ? centre + radius : max;
        const double bottom = arc.contains(-u, -v) ? centre - radius : min;
        max = top > max ? top : max;
        min = bottom < min ? bottom : min;
    }

    Box box_;
};

} // namespace qx::shape
