// Where a Bézier curve meets a straight curve or an arc of a circle.
#pragma once

#include "shape/Bezier.h"
#include "shape/intersections.h"

#include <optional>
#include <vector>

namespace qx::shape {

/// Looks for the points along the curve. Where it passes near, it is cut until chords stand for it to within
/// 1e-10 of its size. A stretch on which both stay within the tolerance is one point, the nearest, when it is
/// short, as at a tangent, and its two ends when they lie upon each other.
class BezierContacts {
public:
    /// Both must outlive this; `other` is no text.
    BezierContacts(const Bezier& curve, const Operand& other);

    const std::vector<AcGePoint3d>& points() const { return points_; }
    /// How near counts as meeting.
    double tolerance() const { return tolerance_; }

private:
    /// Part of the curve.
    struct Piece {
        Bezier shape;
        double from, to;
    };
    struct Stretch {
        double from, to;
    };

    void search(const Piece& piece, int cuts);
    void searchChord(const Piece& piece, bool startsNear, bool endsNear);
    bool isNear(double t) const;
    bool staysNear(const Piece& piece) const;
    double lastNear(double near, double far) const;
    double nearestIn(const Stretch& stretch) const;
    void extendTo(double from, double to);
    void finishStretch();

    const Bezier& curve_;
    const Operand& other_;
    double size_, tolerance_;
    std::optional<Stretch> stretch_; ///< that may go on
    std::vector<AcGePoint3d> points_;
};

} // namespace qx::shape
