// One object of any kind in a drawing with the base line, and the snippets that it is written in.
#pragma once

#include "tests/objectalign/Motion.h"

namespace qx::tests {

/// Entities with parts of their own are given with them: "POLYLINE|70 1; VERTEX|10 1|20 2".
inline Handle addWithParts(DrawingText& drawing, std::string_view compact) {
    const Handle handle = drawing.add(std::string{compact.substr(0, compact.find(';'))});
    bool hasParts = false;
    for (std::size_t at; (at = compact.find("; ")) != compact.npos; hasParts = true) {
        compact.remove_prefix(at + 2);
        drawing.add(std::string{compact.substr(0, compact.find(';'))});
    }
    if (hasParts) drawing.add("SEQEND");
    return handle;
}

/// With the blocks "Down", a stroke of 5 down from its insertion point, and "Angle", strokes of 4 and 2 along
/// its axes.
inline DrawingText withBlocks() {
    return {.blocks = {{"Down", {"LINE|10 0|20 0|11 0|21 -5"}},
                       {"Angle", {"LINE|10 0|20 0|11 4|21 0", "LINE|10 0|20 0|11 0|21 2"}}}};
}

enum class PolylineKind { light, flat, spatial };
inline constexpr PolylineKind polylineKinds[] = {PolylineKind::light, PolylineKind::flat,
                                                 PolylineKind::spatial};

/// The polyline through these places of the world; one that is seen from below is written that way where
/// its kind has a frame.
inline std::string polyline(PolylineKind kind, const std::vector<AcGePoint3d>& vertices,
                            bool isClosed = false, bool fromBelow = false) {
    const std::string flags = isClosed ? "1" : "0", normal = fromBelow ? "|210 0|220 0|230 -1" : "";
    const double side = fromBelow ? -1 : 1, elevation = vertices[0].z * side;
    if (kind == PolylineKind::light) {
        std::string text =
            "LWPOLYLINE|90 " + std::to_string(vertices.size()) + "|70 " + flags + tag(38, elevation);
        for (const AcGePoint3d& each : vertices) text += tag(10, each.x * side) + tag(20, each.y);
        return text + normal;
    }
    const bool isFlat = kind == PolylineKind::flat;
    std::string text = "POLYLINE|66 1|10 0|20 0" + tag(30, isFlat ? elevation : 0) + "|70 " +
                       (isFlat ? flags : std::to_string(8 + (isClosed ? 1 : 0))) + (isFlat ? normal : "");
    for (const AcGePoint3d& each : vertices)
        text += "; VERTEX" + (isFlat ? point(10, {each.x * side, each.y, 0}) : point(10, each)) + "|70 " +
                (isFlat ? "0" : "32");
    return text;
}

/// The object, and a line through the origin, 50 to either side.
struct Scene {
    Scene(std::string_view snippet, double angle)
        : along{std::cos(angle), std::sin(angle), 0}, object{addWithParts(content, snippet)},
          baseLine{content.line(AcGePoint3d::kOrigin - along * 50, AcGePoint3d::kOrigin + along * 50)} {}

    AcDbObjectId objectId() const { return drawing.id(object); }
    AcDbObjectId baseLineId() const { return drawing.id(baseLine); }
    const char* changes() const { return drawing->toBytes() == content.bytes() ? "nothing" : "changed"; }
    /// To be called at the end: what is left must be as it was.
    bool isUndoneToTheBytes() const {
        drawing->history().end();
        while (!drawing->history().undo().empty()) {
        }
        return drawing->openCount() == 0 && drawing->toBytes() == content.bytes();
    }

    DrawingText content = withBlocks();
    AcGeVector3d along;
    Handle object, baseLine;
    OpenedDrawing drawing{content};
    Watched watched{drawing, object};
};

} // namespace qx::tests
