#include "shape/IntersectionSink.h"

#include "shape/Straight.h"

#include <algorithm>
#include <cmath>
#include <limits>

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

/// Whether the curve passes the box, which is not empty, at some distance: asked of a ball around it.
bool IntersectionSink::isAway(const Box& box) const {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const AcGePoint3d centre = box.centre();
    const double radius = sizeOf(box) / 2 + 1e-9 * largestCoordinate(centre);
    if (const auto* segment = std::get_if<Segment>(&curve_.primitive)) {
        Straight straight = straightBetween(segment->start, segment->end);
        if (curve_.extent == Extent::extended && segment->extendsAtStart) straight.lowest = -infinity;
        if (curve_.extent == Extent::extended && segment->extendsAtEnd) straight.highest = infinity;
        return straight.distanceTo(centre) > radius;
    }
    const auto* arc = std::get_if<EllipticArc>(&curve_.primitive);
    return arc && std::abs(centre.distanceTo(arc->centre) - arc->u.length()) > radius;
}

// Curves that do not lie upon each other have at most as many points in common as their degrees make, the
// arc's being two; on each of them two chords may meet.
void IntersectionSink::bezier(const Bezier& curve) {
    const Box hull = hullBox(curve);
    const double tolerance = 1e-10 * sizeOf(hull);
    if (!std::isfinite(tolerance)) return;
    const std::size_t before = found_.size();
    subdivide(curve, [&](const Bezier& piece, bool isSmall) {
        if (isAway(hullBox(piece))) return false;
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
