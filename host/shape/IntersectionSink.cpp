#include "shape/IntersectionSink.h"

#include "shape/bezierContacts.h"

#include <algorithm>

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

void IntersectionSink::bezier(const Bezier& curve) {
    if (std::holds_alternative<TextRun>(curve_.primitive)) return;
    const BezierContacts contacts{curve, curve_};
    if (contacts.points().empty()) return;
    tolerance_ = std::max(tolerance_, contacts.tolerance());
    for (const AcGePoint3d& p : contacts.points())
        found_.push_back(
            {p, positionAlong(curve_, p, 2 * contacts.tolerance()), static_cast<int>(found_.size())});
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
