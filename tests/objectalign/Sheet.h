// A small drawing under a running command: what is on it stands in a line of text, and what became of it is
// read back as where things begin and which way they point.
//
// Such a text is a kind and its points: "line 0,0 10,0,5", "circle 5,0 r3", "arc 5,0 r3 a0..90" (degrees),
// "text 0,0 h2 <30" and "mtext ...", "ELLIPSE 0,0 5,0 r0.5", "angle 3,4" and "hang 3,4" for blocks: strokes
// of 4 and 2 along its axes, or one of 5 down. "lw 0,0 b1 10,0 closed" is a polyline with "b" the bulge
// behind a vertex, "2d ..." and "3d ..." are the older ones; "zN" is the height of a flat one, "down" the
// extrusion 0,0,-1, "LOCKED" the layer, "spline" a spline-fit one whose first and last vertex are its frame.
// Points of what points down are mirrored: x and height change sign. Anything with a bar is a snippet of
// tags.
#pragma once

#include "dbobjptr.h"
#include "drawings/DrawingText.h"
#include "ed/Editor.h"

#include <functional>
#include <string>
#include <vector>

namespace qx::tests {
using drawings::DrawingText;
using drawings::Handle;

DrawingText withBlocks();
Handle draw(DrawingText& drawing, const std::string& text);

/// To so many decimals, without trailing zeros or a negative zero.
std::string rounded(double value, int decimals);
/// "1,2", with a height only where it is not 0.
std::string text(const AcGePoint3d& point);
std::string text(const AcGePoint2d& point);
AcGePoint3d pointOf(const std::string& text);
AcGePoint2d flatPointOf(const std::string& text);

/// "1,2<90": where the first thing that is drawn begins and which way it goes, in degrees; of arcs the centre
/// and the way to where they begin.
std::string pose(const db::Drawing& drawing, Handle handle, int decimals = 4, int ofDegrees = 6);

class Sheet {
public:
    explicit Sheet(const DrawingText& content);
    /// With one entity per text.
    explicit Sheet(const std::vector<std::string>& entities);

    /// Runs the body as one command, and gives what it said. A rule of the host that it breaks is a failure.
    std::string run(const std::function<void()>& body);
    /// Called by a body: the k-th request to the drawing from now to its end is refused; none
    /// when k is negative.
    void refuse(int k);
    const db::Record* refused() const { return refused_; } ///< null when there were not so many
    int changesAfter() const { return changesAfter_; }     ///< of anything

    AcDbObjectId id(std::size_t index) { return drawings::idOf(drawing(), at(index)); }
    AcDbObjectIdArray ids(const std::vector<Handle>& handles);
    /// Of the entities that were there from the beginning, vertices not counted.
    Handle at(std::size_t index) const { return entities_.at(index); }
    const std::vector<Handle>& all() const { return entities_; }

    std::string pose(std::size_t index) { return tests::pose(drawing(), at(index)); }
    std::string poses(const std::vector<Handle>& handles);
    /// What the running command has drawn and not erased: "line 0,0 10,0; circle 5,0 r3".
    std::string drawn();
    std::vector<Handle> handles();
    bool hasTheFilesBytes() { return drawing().toBytes() == bytes_; }
    /// Whether undoing what was done gives the file's bytes.
    bool isUndoneToTheBytes();
    db::Drawing& drawing() { return editor.drawing(); }

    Editor editor;

private:
    std::string bytes_;
    std::vector<Handle> entities_;
    const db::Record* refused_ = nullptr;
    int changesAfter_ = 0;
};

} // namespace qx::tests
