#include "shape/intersections.h"

#include "shape/ExtentsSink.h"
#include "shape/TrigonometricPolynomial.h"
#include "shape/plane.h"

#include <algorithm>
#include <limits>

namespace qx::shape {
namespace {

constexpr double unlimited = std::numeric_limits<double>::infinity();

/// A segment, ray or line; a point when it has no direction.
struct Straight {
    AcGePoint3d origin;
    AcGeVector3d along; ///< of unit length, or zero
    double lowest = 0, highest = 0;

    bool isPoint() const { return along.lengthSqrd() == 0; }
    double extent() const { return highest - lowest; }
    AcGePoint3d at(double s) const { return origin + along * s; }
    double positionOf(const AcGePoint3d& p) const { return along.dotProduct(p - origin); }
    double nearestTo(const AcGePoint3d& p) const { return std::clamp(positionOf(p), lowest, highest); }
    double distanceTo(const AcGePoint3d& p) const { return at(nearestTo(p)).distanceTo(p); }
};

/// An operand as it takes part: extended, and without arcs that are no more than a stroke or a point.
struct Curve {
    std::variant<Straight, EllipticArc> form;
    std::array<AcGePoint3d, 2> ends; ///< as drawn
};

// ---- sizes

double largestCoordinate(const AcGePoint3d& p) {
    return std::max({std::abs(p.x), std::abs(p.y), std::abs(p.z)});
}

EllipticArc completed(EllipticArc arc) {
    arc.sweep = fullTurn;
    arc.cosSweep = 1;
    arc.sinSweep = 0;
    return arc;
}

EllipticArc shownArc(const EllipticArc& arc, Extent extent) {
    return extent == Extent::extended && arc.extends ? completed(arc) : arc;
}

double sizeOf(const Segment& segment, Extent) {
    return std::max(largestCoordinate(segment.start), largestCoordinate(segment.end));
}

// The centre may lie far outside of what is drawn. It matters only for the rounding of the points.
double sizeOf(const EllipticArc& arc, Extent extent) {
    ExtentsSink drawn;
    drawn.arc(shownArc(arc, extent));
    const double rounding = 1e-5 * (largestCoordinate(arc.centre) + arc.u.length() + arc.v.length());
    return std::max({largestCoordinate(drawn.box().min), largestCoordinate(drawn.box().max), rounding});
}

double sizeOf(const TextRun& run, Extent) {
    double size = 0;
    for (const AcGePoint3d& corner : run.inkCorners()) size = std::max(size, largestCoordinate(corner));
    return size;
}

double sizeOf(const Operand& operand) {
    return std::visit([&](const auto& primitive) { return sizeOf(primitive, operand.extent); },
                      operand.primitive);
}

// What is larger than this would leave the range of doubles where lengths are multiplied.
bool isUsable(const Operand& operand) {
    const auto* arc = std::get_if<EllipticArc>(&operand.primitive);
    if (arc && !(arc->sweep >= 0 && arc->sweep <= fullTurn)) return false;
    const auto* run = std::get_if<TextRun>(&operand.primitive);
    if (run && run->extent.blank) return false;
    return std::visit([](const auto& primitive) { return isFinite(primitive); }, operand.primitive) &&
           sizeOf(operand) <= 1e50;
}

// ---- operands as curves

Straight straightBetween(const AcGePoint3d& start, const AcGePoint3d& end) {
    const AcGeVector3d way = end - start;
    const double length = way.length();
    const double rounding = 1e-15 * std::max(largestCoordinate(start), largestCoordinate(end));
    if (!(length > rounding)) return {start, {}, 0, 0};
    return {start, way / length, 0, length};
}

Curve curveOf(const Segment& segment, Extent extent, double) {
    Straight straight = straightBetween(segment.start, segment.end);
    if (extent == Extent::extended && !straight.isPoint()) {
        if (segment.extendsAtStart) straight.lowest = -unlimited;
        if (segment.extendsAtEnd) straight.highest = unlimited;
    }
    return {straight, {segment.start, segment.end}};
}

// The stroke that remains of an ellipse without width: its points lie at centre + along * (a cos t + b sin
// t).
Straight strokeOf(const EllipticArc& arc) {
    const AcGeVector3d longer = arc.u.length() > arc.v.length() ? arc.u : arc.v;
    const AcGeVector3d along = longer / longer.length();
    const double a = along.dotProduct(arc.u), b = along.dotProduct(arc.v), reach = std::hypot(a, b);
    double low = std::min(a, a * arc.cosSweep + b * arc.sinSweep);
    double high = std::max(a, a * arc.cosSweep + b * arc.sinSweep);
    if (arc.contains(a, b)) high = reach;
    if (arc.contains(-a, -b)) low = -reach;
    return straightBetween(arc.centre + along * low, arc.centre + along * high);
}

Curve curveOf(const EllipticArc& drawn, Extent extent, double tolerance) {
    const EllipticArc arc = shownArc(drawn, extent);
    const double size = std::max(arc.u.length(), arc.v.length());
    const std::array ends{drawn.start(), drawn.end()};
    if (size <= tolerance) return {Straight{arc.centre, {}, 0, 0}, ends};
    if (arc.u.crossProduct(arc.v).length() <= tolerance * size) return {strokeOf(arc), ends};
    if (arc.sweep < 1 && arc.sweep * size <= 4 * tolerance)
        return {straightBetween(arc.start(), arc.end()), ends};
    return {arc, ends};
}

double positionAlong(const Straight& straight, const AcGePoint3d& p, double) {
    return straight.positionOf(p);
}

double positionAlong(const EllipticArc& arc, const AcGePoint3d& p, double tolerance) {
    if (p.distanceTo(arc.start()) <= tolerance) return 0;
    const AcGeVector3d normal = arc.u.crossProduct(arc.v), way = p - arc.centre;
    const double angle =
        std::atan2(arc.u.crossProduct(way).dotProduct(normal), way.crossProduct(arc.v).dotProduct(normal));
    return angle < 0 ? angle + fullTurn : angle;
}

/// An end that is so near takes the place of the point.
AcGePoint3d snapped(const AcGePoint3d& p, const Curve& a, const Curve& b, double reach) {
    for (const Curve* curve : {&a, &b})
        for (const AcGePoint3d& end : curve->ends)
            if (p.distanceTo(end) <= reach) return end;
    return p;
}

// ---- straight curves

using Found = std::array<AcGePoint3d, 2>;

int overlap(const Straight& a, const Straight& b, double tolerance, Found& found) {
    const Straight& axis = a.extent() >= b.extent() ? a : b;
    const Straight& other = &axis == &a ? b : a;
    const double direction = axis.along.dotProduct(other.along) < 0 ? -1 : 1;
    const double origin = axis.positionOf(other.origin);
    const double p = origin + direction * other.lowest, q = origin + direction * other.highest;
    double from = std::max(axis.lowest, std::min(p, q)), to = std::min(axis.highest, std::max(p, q));
    if (from > to + tolerance) return 0;
    if (to - from <= tolerance) from = to = from + (to - from) / 2;
    int count = 0;
    for (const double s : {from, to}) {
        if (!std::isfinite(s) || other.distanceTo(axis.at(s)) > tolerance) continue;
        found[static_cast<std::size_t>(count++)] = axis.at(s);
    }
    return count;
}

int crossing(const Straight& a, const Straight& b, double tolerance, Found& found) {
    const AcGeVector3d normal = a.along.crossProduct(b.along), way = b.origin - a.origin;
    const double meeting = way.crossProduct(b.along).dotProduct(normal) / normal.lengthSqrd();
    const double first = std::clamp(meeting, a.lowest, a.highest);
    const AcGePoint3d there = b.at(b.nearestTo(a.at(first))), here = a.at(a.nearestTo(there));
    const double limit = std::max(tolerance, 1e-13 * largestCoordinate(here));
    if (!(here.distanceTo(there) <= limit)) return 0;
    found[0] = here;
    return 1;
}

// Nearly parallel curves are taken for parallel where they could not be told apart over their whole length.
int meetingsOf(const Straight& a, const Straight& b, double tolerance, Found& found) {
    if (a.isPoint() || b.isPoint()) {
        const AcGePoint3d& point = a.isPoint() ? a.origin : b.origin;
        found[0] = point;
        return (a.isPoint() ? b : a).distanceTo(point) <= tolerance;
    }
    const double sine = a.along.crossProduct(b.along).length();
    const bool isParallel = sine <= 1e-12 || sine * std::min(a.extent(), b.extent()) <= tolerance;
    return isParallel ? overlap(a, b, tolerance, found) : crossing(a, b, tolerance, found);
}

// ---- arcs

/// Where along an arc another curve is near, as functions of the arc's parameter.
struct Nearness {
    std::array<TrigonometricPolynomial, 2> distances; ///< across the other curve, all within the tolerance
    std::array<TrigonometricPolynomial, 2> limits;    ///< not negative between the other curve's ends
    int limitCount = 0;
    bool oneLimitIsEnough = false; ///< for more than half a circle
    bool hasOverlaps = false;      ///< whether the other curve may lie upon the arc
    double tolerance = 0;

    void addLimit(const TrigonometricPolynomial& inside) {
        limits[static_cast<std::size_t>(limitCount++)] = inside.lowered(-tolerance);
    }
    double distanceAt(double t) const {
        return std::max(std::abs(distances[0].at(t)), std::abs(distances[1].at(t)));
    }
    bool holdsAt(double t) const {
        if (!(distanceAt(t) <= tolerance)) return false;
        int kept = 0;
        for (int i = 0; i < limitCount; ++i) kept += limits[static_cast<std::size_t>(i)].at(t) >= 0;
        return kept == limitCount || (oneLimitIsEnough && kept > 0);
    }
};

/// An arc seen from its middle: middle - u (1 - cos t) + v sin t for -half <= t <= half.
struct CentredArc {
    explicit CentredArc(const EllipticArc& arc) : half(arc.sweep / 2), isClosed(arc.isClosed()) {
        const double c = std::cos(half), s = std::sin(half);
        u = arc.u * c + arc.v * s;
        v = arc.v * c - arc.u * s;
        middle = arc.centre + u;
    }

    AcGePoint3d at(double t) const {
        const double s = std::sin(t / 2);
        return middle + (v * std::sin(t) - u * (2 * s * s));
    }
    double size() const { return std::max(u.length(), v.length()); }

    AcGePoint3d middle;
    AcGeVector3d u, v;
    double half;
    bool isClosed;
};

/// A vector's product with the way from `origin` to the arc's points.
TrigonometricPolynomial product(const AcGeVector3d& with, const CentredArc& arc, const AcGePoint3d& origin) {
    return {with.dotProduct(arc.middle - origin), -with.dotProduct(arc.u), with.dotProduct(arc.v)};
}

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

/// The parameter of an arc's point; `isBorder` when that is where a span ends.
struct Contact {
    double t;
    bool isBorder;
};

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

template <class Take> void forEachContact(const Nearness& near, const CentredArc& arc, const Take& take) {
    const Spans spans = spansOf(near, arc);
    for (std::size_t i = 0; i < spans.count; ++i) {
        const Span& span = spans.items[i];
        const bool isWhole = arc.isClosed && span.to - span.from >= 2 * arc.half;
        if (!isOverlap(span, near, arc)) {
            take(contactIn(span, near));
        } else if (!isWhole) {
            take(Contact{span.from, true});
            take(Contact{span.to, true});
        }
    }
}

// ---- pairs

bool isCircular(const EllipticArc& arc) {
    const double size = arc.u.lengthSqrd();
    return std::abs(size - arc.v.lengthSqrd()) <= 1e-9 * size &&
           std::abs(arc.u.dotProduct(arc.v)) <= 1e-9 * size;
}

double reachOf(const EllipticArc& arc) { return std::hypot(arc.u.length(), arc.v.length()); }

class Pair {
public:
    Pair(const Curve& first, const Curve& second, double tolerance)
        : first_(first), second_(second), tolerance_(tolerance) {}

    Meetings meetings() {
        std::visit([this](const auto& a, const auto& b) { meet(a, b); }, first_.form, second_.form);
        return found_;
    }

private:
    void meet(const Straight& a, const Straight& b) {
        Found points;
        const int count = meetingsOf(a, b, tolerance_, points);
        for (int i = 0; i < count; ++i) add(points[static_cast<std::size_t>(i)], roundingReach());
    }
    void meet(const Straight& line, const EllipticArc& arc) {
        if (line.distanceTo(arc.centre) > reachOf(arc) + tolerance_) return;
        const CentredArc centred{arc};
        addContacts(nearnessTo(line, centred, tolerance_), centred);
    }
    void meet(const EllipticArc& arc, const Straight& line) { meet(line, arc); }
    // The larger of two circles is the one whose distance is asked for: its points are the less exact ones.
    void meet(const EllipticArc& a, const EllipticArc& b) {
        if (a.centre.distanceTo(b.centre) > reachOf(a) + reachOf(b) + tolerance_) return;
        if (!isCircular(a) && !isCircular(b)) return;
        const bool takesFirst = isCircular(a) && (!isCircular(b) || a.u.length() >= b.u.length());
        const CentredArc centred{takesFirst ? b : a};
        addContacts(nearnessTo(takesFirst ? a : b, centred, tolerance_), centred);
    }
    // The borders of spans lie beyond the ends of curves by as much as counts as meeting.
    void addContacts(const Nearness& near, const CentredArc& arc) {
        forEachContact(near, arc, [&](const Contact& contact) {
            add(arc.at(contact.t), contact.isBorder ? 2 * tolerance_ : roundingReach());
        });
    }
    double roundingReach() const { return 1e-3 * tolerance_; }
    void add(const AcGePoint3d& p, double snapReach) {
        found_.add(snapped(p, first_, second_, snapReach), 2 * tolerance_);
    }

    const Curve& first_;
    const Curve& second_;
    double tolerance_;
    Meetings found_;
};

Curve curveOf(const Operand& operand, double tolerance) {
    if (const auto* segment = std::get_if<Segment>(&operand.primitive))
        return curveOf(*segment, operand.extent, tolerance);
    return curveOf(std::get<EllipticArc>(operand.primitive), operand.extent, tolerance);
}

double positionAlong(const Curve& curve, const AcGePoint3d& point, double tolerance) {
    return std::visit([&](const auto& form) { return positionAlong(form, point, tolerance); }, curve.form);
}

Meetings along(const Curve& curve, Meetings points, double tolerance) {
    std::sort(points.begin(), points.end(), [&](const AcGePoint3d& a, const AcGePoint3d& b) {
        return positionAlong(curve, a, 2 * tolerance) < positionAlong(curve, b, 2 * tolerance);
    });
    return points;
}

std::array<Curve, 4> outlineOf(const TextRun& run) {
    const auto c = run.inkCorners();
    const auto side = [&](std::size_t i) {
        return curveOf(Segment{c[i], c[(i + 1) % 4]}, Extent::asDrawn, 0);
    };
    return {side(0), side(1), side(2), side(3)};
}

} // namespace

void Meetings::add(const AcGePoint3d& point, double tolerance) {
    const auto isEqual = [&](const AcGePoint3d& p) { return p.distanceTo(point) <= tolerance; };
    if (count_ == capacity || std::any_of(begin(), end(), isEqual)) return;
    points_[static_cast<std::size_t>(count_++)] = point;
}

double contactTolerance(const Operand& first, const Operand& second) {
    return 1e-9 * std::max(sizeOf(first), sizeOf(second));
}

double positionAlong(const Operand& operand, const AcGePoint3d& point, double tolerance) {
    if (std::holds_alternative<TextRun>(operand.primitive)) return 0;
    return positionAlong(curveOf(operand, tolerance), point, tolerance);
}

Meetings intersections(const Operand& first, const Operand& second) {
    if (!isUsable(first) || !isUsable(second)) return {};
    const double tolerance = contactTolerance(first, second);
    const auto *before = std::get_if<TextRun>(&first.primitive),
               *behind = std::get_if<TextRun>(&second.primitive);
    if (before && behind) return {};
    if (!before && !behind) {
        const Curve a = curveOf(first, tolerance), b = curveOf(second, tolerance);
        return along(a, Pair{a, b, tolerance}.meetings(), tolerance);
    }
    const Curve curve = curveOf(before ? second : first, tolerance);
    Meetings all;
    for (const Curve& side : outlineOf(before ? *before : *behind))
        for (const AcGePoint3d& p : along(side, Pair{side, curve, tolerance}.meetings(), tolerance))
            all.add(p, 2 * tolerance);
    return before ? all : along(curve, all, tolerance);
}

} // namespace qx::shape
