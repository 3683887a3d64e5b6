// Where along an elliptic arc another curve is near: a straight one, or an arc of a circle.
//
// All distances are functions of the arc's parameter that change their sign a few times at most. The
// parameters between which they stay within the tolerance are found exactly, so that tangent contacts are not
// lost, and give one contact each.
#pragma once

#include "shape/Primitives.h"
#include "shape/Straight.h"
#include "shape/TrigonometricPolynomial.h"

namespace qx::shape {

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

/// The arc has a width.
Nearness nearnessTo(const Straight& line, const CentredArc& arc, double tolerance);
/// Of a circle, or of a part of one.
Nearness nearnessTo(const EllipticArc& circle, const CentredArc& arc, double tolerance);

/// The parameter of an arc's point; `isBorder` when it is only the end of the stretch that is near, which
/// lies beyond the end of a curve by up to the tolerance.
struct Contact {
    double t;
    bool isBorder;
};

struct Contacts {
    std::array<Contact, 16> items;
    std::size_t count = 0;

    const Contact* begin() const { return items.data(); }
    const Contact* end() const { return items.data() + count; }
    void add(const Contact& contact) {
        if (count < items.size()) items[count++] = contact;
    }
};

/// One for each stretch that is near; where the curves lie upon each other, the ends of the stretch.
Contacts contacts(const Nearness& near, const CentredArc& arc);

} // namespace qx::shape
