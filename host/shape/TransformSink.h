// Hands each primitive's image under an affine map to another sink, as a part of something larger: nothing of
// it is extended by intersections.
#pragma once

#include "shape/Sink.h"

namespace qx::shape {

class TransformSink final : public Sink {
public:
    /// `target` must outlive this sink.
    TransformSink(Sink& target, const AcGeMatrix3d& matrix) : target_(target), matrix_(matrix) {}

    void segment(const Segment& segment) override {
        target_.segment({matrix_ * segment.start, matrix_ * segment.end, false, false, segment.isHidden});
    }
    void arc(const EllipticArc& arc) override {
        target_.arc(
            {matrix_ * arc.centre, matrix_ * arc.u, matrix_ * arc.v, arc.sweep, arc.cosSweep, arc.sinSweep});
    }
    void text(const TextRun& run) override {
        target_.text({matrix_ * run.origin, matrix_ * run.along, matrix_ * run.up, run.extent, run.bytes,
                      run.encoding});
    }
    void endless(const Endless& line) override {
        target_.endless({matrix_ * line.base, matrix_ * line.along, line.goesBothWays});
    }
    void bezier(const Bezier& curve) override {
        Bezier image = curve;
        for (WeightedPoint& each : image.controls()) each.point = matrix_ * each.point;
        target_.bezier(image);
    }
    bool isFull() const override { return target_.isFull(); }

private:
    Sink& target_;
    AcGeMatrix3d matrix_;
};

} // namespace qx::shape
