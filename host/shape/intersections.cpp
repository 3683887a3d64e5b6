#include "shape/intersections.h"

#include "shape/ExtentsSink.h"
#include "shape/arcContacts.h"
#include "shape/plane.h"

#include <algorithm>
#include <limits>

namespace qx::shape {
namespace {

constexpr double unlimited = std::numeric_limits<double>::infinity();

/// An operand as it takes part: extended, and without arcs that are no more than a stroke or a point.
struct Curve {
    std::variant<Straight, EllipticArc> form;
    std::array<AcGePoint3d, 2> ends; ///< as drawn
};

// ---- sizes

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

double sizeOf(const Endless& line, Extent) { return largestCoordinate(line.base); }

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

Curve curveOf(const Segment& segment, Extent extent, double) {
    Straight straight = straightBetween(segment.start, segment.end);
    if (extent == Extent::extended && !straight.isPoint()) {
        if (segment.extendsAtStart) straight.lowest = -unlimited;
        if (segment.extendsAtEnd) straight.highest = unlimited;
    }
    return {straight, {segment.start, segment.end}};
}

Curve curveOf(const Endless& line, Extent extent, double) {
    const double length = line.along.length();
    Straight straight{line.base, {}, 0, 0};
    if (length > 0) straight = {line.base, line.along / length, 0, unlimited};
    if (length > 0 && (line.goesBothWays || extent == Extent::extended)) straight.lowest = -unlimited;
    return {straight, {line.base, line.base}};
}

// What remains of an ellipse without width: points at centre + along * (a cos t + b sin t).
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
        const StraightMeetings found = qx::shape::meetings(a, b, tolerance_);
        for (std::size_t i = 0; i < found.count; ++i) add(found.points[i], roundingReach());
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
        for (const Contact& contact : contacts(near, arc))
            add(arc.at(contact.t), contact.isBorder ? 2 * tolerance_ : roundingReach());
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
    if (const auto* line = std::get_if<Endless>(&operand.primitive))
        return curveOf(*line, operand.extent, tolerance);
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

double distanceTo(const Operand& operand, const AcGePoint3d& point) {
    const Curve curve = curveOf(operand, 0);
    if (const auto* straight = std::get_if<Straight>(&curve.form)) return straight->distanceTo(point);
    const auto& arc = std::get<EllipticArc>(curve.form);
    const double radius = arc.u.length();
    const AcGeVector3d x = arc.u / radius, y = arc.v / radius, way = point - arc.centre;
    const double along = way.dotProduct(x), across = way.dotProduct(y);
    if (!arc.contains(along, across))
        return std::min(point.distanceTo(arc.start()), point.distanceTo(arc.end()));
    return std::hypot(std::hypot(along, across) - radius, way.dotProduct(x.crossProduct(y)));
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
