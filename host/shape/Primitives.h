// What objects look like: segments, elliptic arcs and lines of text in world coordinates, and the box around
// them. Plain values without checks; a coordinate that is no finite number is passed over or passed on by
// those who compute from them, never an endless loop.
#pragma once

#include "ge/angles.h"
#include "gemat3d.h"
#include "gepnt3d.h"
#include "qxexport.h"
#include "text/measure.h"

#include <array>
#include <numbers>
#include <string_view>

namespace qx::shape {

using qx::ge::fullTurn;

/// The flags say where an intersection may extend the segment; as drawn it always ends at its two points. A
/// hidden one is there for all but pictures.
struct Segment {
    AcGePoint3d start, end;
    bool extendsAtStart = false, extendsAtEnd = false, isHidden = false;
};

/// The points base + along * s for all s >= 0, or for all s when it goes both ways; the base alone when there
/// is no direction. It has no box, and nobody computes with an end of it.
struct Endless {
    AcGePoint3d base;
    AcGeVector3d along;
    bool goesBothWays = false;
};

/// p(t) = centre + u cos t + v sin t for 0 <= t <= sweep, 0 < sweep <= 2 pi; closed when sweep is fullTurn.
/// u and v need not be perpendicular: any affine image of an arc is an arc again. `extends` says that an
/// intersection may complete it to the whole ellipse.
struct EllipticArc {
    AcGePoint3d centre;
    AcGeVector3d u, v;
    double sweep, cosSweep, sinSweep;
    bool extends = false;

    bool isClosed() const { return sweep >= fullTurn; }
    AcGePoint3d start() const { return centre + u; }
    AcGePoint3d end() const { return at(cosSweep, sinSweep); }
    /// The point at the parameter with this cosine and sine.
    AcGePoint3d at(double cosine, double sine) const { return centre + (u * cosine + v * sine); }
    /// Whether the arc passes the parameter in direction (cosine, sine), a vector of any length but zero.
    bool contains(double cosine, double sine) const {
        // Without branches: whoever measures many arcs asks this of directions that may lie anywhere.
        const bool isAfterStart = sine >= 0, isBeforeEnd = cosine * sinSweep - sine * cosSweep >= 0;
        const bool isBoth = isAfterStart & isBeforeEnd, isEither = isAfterStart | isBeforeEnd;
        return isClosed() | (sweep <= std::numbers::pi ? isBoth : isEither);
    }
};

/// One line of text: origin at the left end of its baseline; `along` is the advance direction scaled to one
/// em, `up` to one text height. `bytes` are for those who draw the characters: with an `encoding`, as a file
/// has them, special codes included; without one, UTF-8 as shown, in which nothing is a code.
struct TextRun {
    AcGePoint3d origin;
    AcGeVector3d along, up;
    qx::text::TextExtent extent;
    std::string_view bytes;
    const void* encoding;

    AcGePoint3d at(double ems, double heights) const { return origin + (along * ems + up * heights); }
    /// Corners of the ink box, around it from bottom left.
    std::array<AcGePoint3d, 4> inkCorners() const {
        return {at(extent.inkLeft, extent.inkBottom), at(extent.inkRight, extent.inkBottom),
                at(extent.inkRight, extent.inkTop), at(extent.inkLeft, extent.inkTop)};
    }
};

/// Axis-parallel box; as made, it is empty and holds the values that stand for "no extents".
struct Box {
    AcGePoint3d min{1e20, 1e20, 1e20}, max{-1e20, -1e20, -1e20};

    bool isEmpty() const { return !(min.x <= max.x && min.y <= max.y && min.z <= max.z); }
    AcGePoint3d centre() const { return min + (max - min) / 2; }

    /// Coordinates that are not numbers are passed over.
    void add(const AcGePoint3d& p) {
        min = {p.x < min.x ? p.x : min.x, p.y < min.y ? p.y : min.y, p.z < min.z ? p.z : min.z};
        max = {p.x > max.x ? p.x : max.x, p.y > max.y ? p.y : max.y, p.z > max.z ? p.z : max.z};
    }
    /// An empty box adds nothing.
    void add(const Box& box) {
        if (box.isEmpty()) return;
        add(box.min);
        add(box.max);
    }
};

/// The box around the image of a box; empty for an empty one.
QX_HOST_API Box transformed(const Box& box, const AcGeMatrix3d& matrix);

} // namespace qx::shape
