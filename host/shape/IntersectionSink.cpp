#include "shape/IntersectionSink.h"

#include "shape/Straight.h"

#include <algorithm>
#include <cmath>

namespace qx::shape {

void IntersectionSink::meet(const Operand& seen) {
    const Meetings points =
        order_ == Order::alongCurve ? intersections(curve_, seen) : intersections(seen, curve_);
    if (points.count() == 0) return;
    const double tolerance = contactTolerance(curve_, seen);
    tolerance_ = std::max(tolerance_, tolerance);
    for (const AcGePoint3d& p : points)
        found_.push_back({p, positionAlong(curve_, p, 2 * tolerance), static_cast<int>(found_.size())});
}

// Curves that do not lie upon each other have at most as many points in common as their degrees make, the
// arc's being two; on each of them two chords may meet.
void IntersectionSink::bezier(const Bezier& curve) {
    const Box hull = hullBox(curve);
    const double tolerance = 1e-10 * sizeOf(hull);
    if (!std::isfinite(tolerance)) return;
    const std::size_t before = found_.size();
    subdivide(curve, [&](const Bezier& piece, bool isSmall) {
        const Box box = hullBox(piece);
        const double radius = sizeOf(box) / 2 + 1e-9 * largestCoordinate(box.centre());
        if (!canReach(curve_, box.centre(), radius)) return false;
        if (!isSmall && bendOf(piece) > tolerance) return true;
        meet({Segment{piece.start(), piece.end()}, seen_});
        return false;
    });
    const std::size_t most = 4 * static_cast<std::size_t>(curve.degree);
    if (found_.size() - before > most)
        found_.erase(found_.begin() + static_cast<std::ptrdiff_t>(before) + 1, found_.end() - 1);
}

// All points lie on the curve, so that equal ones stand side by side when they are sorted along it.
void IntersectionSink::dropRepeats() {
    std::sort(found_.begin(), found_.end(), [](const Found& a, const Found& b) {
        return a.position < b.position || (a.position == b.position && a.rank < b.rank);
    });
    std::size_t kept = 0;
    for (const Found& each : found_) {
        Found* last = kept ? &found_[kept - 1] : nullptr;
        if (last && last->point.distanceTo(each.point) <= 2 * tolerance_)
            last->rank = std::min(last->rank, each.rank);
        else
            found_[kept++] = each;
    }
    found_.resize(kept);
}

void IntersectionSink::appendTo(AcGePoint3dArray& points) {
    dropRepeats();
    if (order_ == Order::asSeen)
        std::sort(found_.begin(), found_.end(),
                  [](const Found& a, const Found& b) { return a.rank < b.rank; });
    for (const Found& each : found_) points.append(each.point);
}

} // namespace qx::shape
