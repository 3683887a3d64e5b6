// Where a straight line or an arc of a circle meets everything seen. Points that are met more than once, as
// the shared ends of neighbours are, count once. A Bézier curve is met by chords, cut where it comes near
// until they are within 1e-10 of its size; one that lies upon the arc meets it at the ends of what they have
// in common. Memory is taken for the points found and for nothing else.
#pragma once

#include "shape/Sink.h"
#include "shape/intersections.h"

#include "gept3dar.h"

#include <vector>

namespace qx::shape {

class QX_HOST_API IntersectionSink final : public Sink {
public:
    enum class Order { alongCurve, asSeen };

    /// `seen` is the extent of what is handed over.
    IntersectionSink(const Operand& curve, Extent seen, Order order)
        : curve_(curve), seen_(seen), order_(order) {}

    void segment(const Segment& segment) override { meet({segment, seen_}); }
    void arc(const EllipticArc& arc) override { meet({arc, seen_}); }
    void text(const TextRun& run) override { meet({run, seen_}); }
    void endless(const Endless& line) override { meet({line, seen_}); }
    void bezier(const Bezier& curve) override;

    /// Adds the points: along the curve, or along what was seen, one primitive behind the other. To be
    /// called once, at the end.
    void appendTo(AcGePoint3dArray& points);

private:
    struct Found {
        AcGePoint3d point;
        double position; ///< along the curve
        int rank;        ///< in the order of seeing
    };

    void meet(const Operand& seen);
    void dropRepeats();

    Operand curve_;
    Extent seen_;
    Order order_;
    double tolerance_ = 0;
    std::vector<Found> found_;
};

/// Keeps the last straight line or arc it is shown: for objects that consist of one.
class OnlyPrimitive final : public Sink {
public:
    Operand operand;

    void segment(const Segment& segment) override { operand.primitive = segment; }
    void arc(const EllipticArc& arc) override { operand.primitive = arc; }
    void text(const TextRun&) override {}
    void endless(const Endless& line) override { operand.primitive = line; }
};

} // namespace qx::shape
