// Where two primitives meet in space. What passes at no more than 1e-9 of the size of the coordinates counts
// as meeting; where two curves stay that near for a while without being the same, as in a tangent contact,
// they meet once. Curves that lie upon each other meet at the ends of the common part, and nowhere when it
// has no ends.
#pragma once

#include "shape/Primitives.h"

#include <variant>

namespace qx::shape {

enum class Extent {
    asDrawn,
    extended ///< where the primitive's own flags allow it
};

using Primitive = std::variant<Segment, EllipticArc, TextRun, Endless>;

struct Operand {
    Primitive primitive; ///< text: the outline of its ink box
    Extent extent = Extent::asDrawn;
};

/// The points of one intersection.
class Meetings {
public:
    static constexpr int capacity = 8;

    const AcGePoint3d* begin() const { return points_.data(); }
    const AcGePoint3d* end() const { return points_.data() + count_; }
    AcGePoint3d* begin() { return points_.data(); }
    AcGePoint3d* end() { return points_.data() + count_; }
    int count() const { return count_; }
    /// Passes over a point that is no farther than `tolerance` from one it has.
    QX_HOST_API void add(const AcGePoint3d& point, double tolerance);

private:
    std::array<AcGePoint3d, capacity> points_{};
    int count_ = 0;
};

/// The points in order along the first operand: from its start to its end, an extension beyond the start in
/// front of it, the rest of a circle behind the end; around text from its bottom left corner. One of the two
/// is to be straight or an arc of a circle: two other arcs and two texts give no points, nor do coordinates
/// that are not finite or beyond 1e50.
QX_HOST_API Meetings intersections(const Operand& first, const Operand& second);

/// Of an operand that is no text; an arc is to be one of a circle.
double distanceTo(const Operand& operand, const AcGePoint3d& point);

/// How near counts as meeting.
QX_HOST_API double contactTolerance(const Operand& first, const Operand& second);

/// A number that grows along the operand in the order of its points: a length for a segment, an angle for an
/// arc, 0 for text. Points nearer to the start of an arc than `tolerance` are at its start.
QX_HOST_API double positionAlong(const Operand& operand, const AcGePoint3d& point, double tolerance);

} // namespace qx::shape
