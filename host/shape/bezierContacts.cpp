#include "shape/bezierContacts.h"

#include "shape/Straight.h"

#include <cmath>

namespace qx::shape {

namespace {
constexpr int mostCuts = 40;
}

BezierContacts::BezierContacts(const Bezier& curve, const Operand& other)
    : curve_{curve}, other_{other}, size_{sizeOf(hullBox(curve))} {
    const Box hull = hullBox(curve);
    tolerance_ = contactTolerance({Segment{hull.min, hull.max}}, other);
    if (!std::isfinite(size_ + tolerance_)) return;
    search({curve, 0, 1}, mostCuts);
    finishStretch();
}

void BezierContacts::search(const Piece& piece, int cuts) {
    constexpr double straightness = 1e-10;
    const Box box = hullBox(piece.shape);
    if (distanceTo(other_, box.centre()) > sizeOf(box) / 2 + tolerance_) return finishStretch();
    const bool startsNear = isNear(piece.from), endsNear = isNear(piece.to);
    if (startsNear && endsNear && staysNear(piece)) return extendTo(piece.from, piece.to);
    if (cuts == 0 || bendOf(piece.shape) <= straightness * size_)
        return searchChord(piece, startsNear, endsNear);
    const auto [first, second] = halves(piece.shape);
    const double middle = (piece.from + piece.to) / 2;
    search({first, piece.from, middle}, cuts - 1);
    search({second, middle, piece.to}, cuts - 1);
}

void BezierContacts::searchChord(const Piece& piece, bool startsNear, bool endsNear) {
    if (startsNear) extendTo(piece.from, lastNear(piece.from, piece.to));
    finishStretch();
    if (endsNear) extendTo(lastNear(piece.to, piece.from), piece.to);
    if (startsNear || endsNear) return;
    const Segment chord{piece.shape.start(), piece.shape.end()};
    for (const AcGePoint3d& each : intersections({chord}, other_)) points_.push_back(each);
}

bool BezierContacts::isNear(double t) const { return distanceTo(other_, curve_.at(t)) <= tolerance_; }

// Curves that have more points in common than their degrees make lie upon each other; the arc's is two.
bool BezierContacts::staysNear(const Piece& piece) const {
    const int count = 2 * curve_.degree;
    for (int i = 1; i < count; ++i)
        if (!isNear(piece.from + (piece.to - piece.from) * i / count)) return false;
    return true;
}

double BezierContacts::lastNear(double near, double far) const {
    for (int i = 0; i < 50; ++i) {
        const double middle = (near + far) / 2;
        (isNear(middle) ? near : far) = middle;
    }
    return near;
}

// Of a flat minimum rounding hides the exact place; an end is taken where it is as good, since the
// neighbouring curve takes it, too.
double BezierContacts::nearestIn(const Stretch& stretch) const {
    double low = stretch.from, high = stretch.to;
    const auto distanceAt = [&](double t) { return distanceTo(other_, curve_.at(t)); };
    for (int i = 0; i < 80; ++i) {
        const double third = (high - low) / 3;
        if (distanceAt(low + third) <= distanceAt(high - third))
            high -= third;
        else
            low += third;
    }
    const double inside = (low + high) / 2;
    for (const double end : {stretch.from, stretch.to})
        if (distanceAt(end) <= distanceAt(inside) + tolerance_ / 1000) return end;
    return inside;
}

void BezierContacts::extendTo(double from, double to) {
    if (!stretch_) stretch_ = {from, to};
    stretch_->to = to;
}

void BezierContacts::finishStretch() {
    constexpr double shortest = 1e-3; // of what is more than a contact, in sizes of the curve
    if (!stretch_) return;
    const AcGePoint3d start = curve_.at(stretch_->from), end = curve_.at(stretch_->to);
    const AcGePoint3d middle = curve_.at((stretch_->from + stretch_->to) / 2);
    if (start.distanceTo(middle) + middle.distanceTo(end) > shortest * size_) {
        points_.push_back(start);
        points_.push_back(end);
    } else {
        points_.push_back(curve_.at(nearestIn(*stretch_)));
    }
    stretch_.reset();
}

} // namespace qx::shape
