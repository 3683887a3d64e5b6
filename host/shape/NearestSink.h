// How near everything seen comes to a point, seen along Z: distances are measured in the XY plane. Text
// counts as its filled ink box, a Bézier curve as its chords. Primitives with non-finite coordinates are
// passed over.
#pragma once

#include "shape/Sink.h"

#include <limits>

namespace qx::shape {

class QX_HOST_API NearestSink final : public Sink {
public:
    /// Only what is nearer than `limit` is taken notice of.
    explicit NearestSink(const AcGePoint3d& from, double limit = std::numeric_limits<double>::infinity())
        : from_(from), distance_(limit) {}

    /// False as long as nothing came nearer than the limit.
    bool hasFoot() const { return hasFoot_; }
    /// In the XY plane; the limit as long as there is no foot.
    double distance() const { return distance_; }
    /// The nearest point, with its own Z (inside text: that of its baseline's begin); the first one seen when
    /// several are equally near.
    const AcGePoint3d& foot() const { return foot_; }

    void segment(const Segment& segment) override;
    void arc(const EllipticArc& arc) override;
    void text(const TextRun& run) override;
    void endless(const Endless& line) override;
    void bezier(const Bezier& curve) override;
    bool isFull() const override { return distance_ <= 0; }

private:
    void offer(const AcGePoint3d& candidate);

    AcGePoint3d from_;
    double distance_;
    AcGePoint3d foot_;
    bool hasFoot_ = false;
};

} // namespace qx::shape
