// Random objects of every kind, and what a reader of their file would say about their edges.
#pragma once

#include "shape/randomShapes.h"
#include "tests/objectalign/Scene.h"

#include <algorithm>

namespace qx::tests {

/// The edge by which an object is aligned, in world coordinates.
struct EdgeModel {
    AcGePoint3d base, second;
    AcGeVector3d direction;
};

struct Specimen {
    enum class Kind { line, block, text, lines, light, flat, spatial, arc, circle, ellipse, count };

    Kind kind;
    Handle handle;
    std::vector<AcGePoint3d>
        points;               ///< ends, vertices or what there is of them; of an arc: centre and middle
    AcGeVector3d direction;   ///< of a block or text, of an arc's chord
    double toOutline = 0;     ///< radius or minor radius
    double height = 0;        ///< of letters
    bool endsParallel = true; ///< not a block past a half turn, nor what has no direction

    bool isArc() const { return kind == Kind::arc; }
    bool hasVertices() const { return kind == Kind::light || kind == Kind::flat || kind == Kind::spatial; }

    /// Random objects have no ties. Ends count in space, vertices in the plane, where that differs.
    EdgeModel edge(const AcGePoint3d& reference, bool inSpace) const {
        const auto distance = [&](const AcGePoint3d& p) {
            const AcGeVector3d d = p - reference;
            return inSpace && !hasVertices() ? d.length() : std::hypot(d.x, d.y);
        };
        std::size_t base = 0;
        for (std::size_t i = 1; i < points.size(); ++i)
            if (distance(points[i]) < distance(points[base])) base = i;
        const AcGePoint3d &before = points[(base + points.size() - 1) % points.size()],
                          &after = points[(base + 1) % points.size()];
        const AcGePoint3d& second = distance(before) < distance(after) ? before : after;
        return {points[base], second, points.size() > 1 ? second - points[base] : direction};
    }
};

/// Draws it somewhere within 100 of the origin, often off the plane and often seen from below.
inline Specimen drawn(DrawingText& drawing, shapes::Random& random, Specimen::Kind kind) {
    using Kind = Specimen::Kind;
    constexpr double degree = std::numbers::pi / 180;
    const double side = random.oneIn(3) ? -1 : 1, size = random.number(1, 9), degrees = random.number(0, 360);
    const AcGePoint3d own{random.number(-100, 100), random.number(-100, 100),
                          random.oneIn(2) ? 0 : random.number(-9, 9)};
    const AcGePoint3d place{own.x * side, own.y, own.z * side};
    const auto toWorld = [&](double angle) {
        return AcGeVector3d{std::cos(angle * degree) * side, std::sin(angle * degree), 0};
    };
    const std::string normal = side < 0 ? "|210 0|220 0|230 -1" : "";
    Specimen specimen{kind, 0, {place}, toWorld(degrees)};
    switch (kind) {
    case Kind::line:
        specimen.points = {place, random.point(100)};
        specimen.handle = drawing.line(place, specimen.points[1]);
        break;
    case Kind::block:
        specimen.handle = drawing.add("INSERT|2 Angle" + point(10, own) + tag(50, degrees) + normal);
        specimen.endsParallel = specimen.direction.y >= 0;
        break;
    case Kind::text:
        specimen.height = size;
        specimen.handle =
            drawing.add("TEXT" + point(10, own) + tag(40, size) + "|1 Wall" + tag(50, degrees) + normal);
        break;
    case Kind::lines:
        specimen.height = size;
        specimen.handle = drawing.add("MTEXT" + point(10, place) + tag(40, size) + "|71 7|1 Wall\\Pdoor" +
                                      tag(50, degrees) + normal);
        break;
    case Kind::light:
    case Kind::flat:
    case Kind::spatial:
        for (int i = 0; i < 5; ++i)
            specimen.points.push_back({random.number(-100, 100), random.number(-100, 100),
                                       kind == Kind::spatial ? random.number(-9, 9) : place.z});
        specimen.handle = addWithParts(
            drawing, polyline(polylineKinds[static_cast<int>(kind) - static_cast<int>(Kind::light)],
                              specimen.points, random.oneIn(2), side < 0));
        break;
    case Kind::arc: {
        const double sweep = random.number(10, 350);
        specimen.handle = drawing.add("ARC" + point(10, own) + tag(40, size) + tag(50, degrees) +
                                      tag(51, degrees + sweep) + normal);
        specimen.points.push_back(place + toWorld(degrees + sweep / 2) * size);
        specimen.direction = toWorld(degrees) - toWorld(degrees + sweep);
        break;
    }
    case Kind::circle:
        specimen.endsParallel = false;
        specimen.toOutline = size;
        specimen.handle = drawing.add("CIRCLE" + point(10, own) + tag(40, size) + normal);
        break;
    default:
        specimen.toOutline = size * 0.4;
        specimen.direction = toWorld(degrees) * size;
        specimen.points = {place + specimen.direction, place - specimen.direction};
        specimen.handle =
            drawing.add("ELLIPSE" + point(10, place) + point(11, AcGePoint3d::kOrigin + specimen.direction) +
                        "|40 0.4" + normal);
    }
    return specimen;
}

/// One of each kind, in their order.
inline std::vector<Specimen> oneOfEach(DrawingText& drawing, shapes::Random& random) {
    std::vector<Specimen> all;
    for (int kind = 0; kind < static_cast<int>(Specimen::Kind::count); ++kind)
        all.push_back(drawn(drawing, random, static_cast<Specimen::Kind>(kind)));
    return all;
}

} // namespace qx::tests
