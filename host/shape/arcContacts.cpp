#include "shape/arcContacts.h"

#include <algorithm>

namespace qx::shape {
namespace {

/// A vector's product with the way from `origin` to the arc's points.
TrigonometricPolynomial product(const AcGeVector3d& with, const CentredArc& arc, const AcGePoint3d& origin) {
    return {with.dotProduct(arc.middle - origin), -with.dotProduct(arc.u), with.dotProduct(arc.v)};
}

struct Span {
    double from, to;
};

struct Spans {
    std::array<Span, 16> items{};
    std::size_t count = 0;
};

/// The parameters between which nothing changes, sorted.
class Breaks {
public:
    Breaks(const Nearness& near, double half) : half_(half) {
        for (const double t : {-half, -std::numbers::pi / 2, std::numbers::pi / 2, half}) add(t);
        for (const auto& distance : near.distances)
            for (const double level : {near.tolerance, -near.tolerance})
                for (const double t : distance.lowered(level).signChanges()) add(t);
        for (int i = 0; i < near.limitCount; ++i)
            for (const double t : near.limits[static_cast<std::size_t>(i)].signChanges()) add(t);
        std::sort(values_.begin(), values_.begin() + count_);
    }
    int pieces() const { return count_ - 1; }
    Span piece(int i) const {
        const auto index = static_cast<std::size_t>(i);
        return {values_[index], values_[index + 1]};
    }

private:
    void add(double t) {
        if (std::abs(t) <= half_ && count_ < static_cast<int>(values_.size()))
            values_[static_cast<std::size_t>(count_++)] = t;
    }

    std::array<double, 48> values_{};
    int count_ = 0;
    double half_;
};

// A piece as short as rounding says nothing and takes after its neighbours.
Spans spansOf(const Nearness& near, const CentredArc& arc) {
    Spans spans;
    bool isOpen = false;
    const Breaks breaks{near, arc.half};
    for (int i = 0; i < breaks.pieces(); ++i) {
        const Span piece = breaks.piece(i);
        if (piece.to - piece.from <= 1e-14 * arc.half) continue;
        const bool holds = near.holdsAt(piece.from + (piece.to - piece.from) / 2);
        if (holds && isOpen) spans.items[spans.count - 1].to = piece.to;
        if (holds && !isOpen && spans.count < spans.items.size()) spans.items[spans.count++] = piece;
        isOpen = holds;
    }
    Span &first = spans.items[0], &last = spans.items[spans.count ? spans.count - 1 : 0];
    if (arc.isClosed && spans.count > 1 && first.from <= -arc.half && last.to >= arc.half) {
        first.from = last.from - fullTurn;
        --spans.count;
    }
    return spans;
}

/// Where in a span the other curve is crossed, or touched, or comes nearest.
Contact contactIn(const Span& span, const Nearness& near) {
    const double middle = span.from + (span.to - span.from) / 2;
    const auto change = [&](const TrigonometricPolynomial& p) {
        return std::max(std::abs(p.at(span.to) - p.at(span.from)), std::abs(p.at(middle) - p.at(span.from)));
    };
    const auto isCrossed = [&](const TrigonometricPolynomial& p) {
        return (p.at(span.from) < 0) != (p.at(span.to) < 0);
    };
    const auto& distance = near.distances[change(near.distances[0]) >= change(near.distances[1]) ? 0 : 1];
    for (const TrigonometricPolynomial& p : {distance, distance.derivative()})
        if (isCrossed(p)) return {p.zeroBetween(span.from, span.to), false};
    return {std::abs(distance.at(span.from)) <= std::abs(distance.at(span.to)) ? span.from : span.to, true};
}

/// True when the curves part at neither end of the span: one of them ends there.
bool isOverlap(const Span& span, const Nearness& near, const CentredArc& arc) {
    const double length = (span.to - span.from) * arc.size();
    return near.hasOverlaps && length > 4 * near.tolerance &&
           std::max(near.distanceAt(span.from), near.distanceAt(span.to)) < 0.999 * near.tolerance;
}

} // namespace

Nearness nearnessTo(const Straight& line, const CentredArc& arc, double tolerance) {
    const AcGeVector3d cross = arc.u.crossProduct(arc.v), normal = cross / cross.length();
    const AcGeVector3d along = line.isPoint() ? normal : line.along;
    AcGeVector3d side = along.crossProduct(normal); // in the arc's plane, unless the line stands upon it
    if (side.length() < 1e-3) side = along.crossProduct(arc.u);
    side /= side.length();
    Nearness near;
    near.tolerance = tolerance;
    near.distances = {product(side, arc, line.origin), product(along.crossProduct(side), arc, line.origin)};
    const TrigonometricPolynomial position = product(along, arc, line.origin);
    if (std::isfinite(line.lowest)) near.addLimit(position.lowered(line.lowest));
    if (std::isfinite(line.highest)) near.addLimit(position.scaled(-1).lowered(-line.highest));
    return near;
}

// The first distance is (x^2 + y^2 - r^2) / 2 r, which near the circle is the way to it.
Nearness nearnessTo(const EllipticArc& circle, const CentredArc& arc, double tolerance) {
    const double radius = circle.u.length();
    const AcGeVector3d xAxis = circle.u / radius, yAxis = circle.v / radius;
    const auto x = product(xAxis, arc, circle.centre), y = product(yAxis, arc, circle.centre);
    const auto xx = squared(x), yy = squared(y);
    const TrigonometricPolynomial beyond{xx.constant + yy.constant - radius * radius, xx.q1 + yy.q1,
                                         xx.s1 + yy.s1, xx.qq + yy.qq, xx.qs + yy.qs};
    Nearness near;
    near.tolerance = tolerance;
    near.hasOverlaps = true;
    near.distances = {beyond.scaled(1 / (2 * radius)),
                      product(xAxis.crossProduct(yAxis), arc, circle.centre)};
    if (circle.isClosed()) return near;
    near.oneLimitIsEnough = circle.sweep > std::numbers::pi;
    near.addLimit(y);
    near.addLimit(product(xAxis * circle.sinSweep - yAxis * circle.cosSweep, arc, circle.centre));
    return near;
}

Contacts contacts(const Nearness& near, const CentredArc& arc) {
    Contacts found;
    const Spans spans = spansOf(near, arc);
    for (std::size_t i = 0; i < spans.count; ++i) {
        const Span& span = spans.items[i];
        const bool isWhole = arc.isClosed && span.to - span.from >= 2 * arc.half;
        if (!isOverlap(span, near, arc)) {
            found.add(contactIn(span, near));
        } else if (!isWhole) {
            found.add({span.from, true});
            found.add({span.to, true});
        }
    }
    return found;
}

} // namespace qx::shape
