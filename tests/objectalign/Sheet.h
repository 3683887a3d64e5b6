// A small drawing under a running command: what is on it stands in a line of text, and what became of it is
// read back in the same form.
//
// Such a text is a kind and its points: "line 0,0 10,0,5", "circle 5,0 r3", "arc 5,0 r3 a0..90" (degrees),
// "lw 0,0 b1 10,0 closed" with "b" the bulge behind a vertex, "2d ..." and "3d ..." for the older polylines;
// "zN" is the height of a flat one, "down" the extrusion 0,0,-1, "LOCKED" the layer, "spline" a spline-fit
// one whose first and last vertex are its frame. Points of what points down are mirrored: x and height change
// sign. Anything with a bar is a snippet of tags.
#pragma once

#include "dbobjptr.h"
#include "drawings/DrawingText.h"
#include "ed/Editor.h"
#include "gept3dar.h"

#include <functional>
#include <string>
#include <vector>

namespace qx::tests {
using drawings::DrawingText;
using drawings::Handle;

Handle draw(DrawingText& drawing, const std::string& text);

/// "1,2" as a point.
AcGePoint2d pointOf(const std::string& text);
/// Points to four decimals; a height only where it is not 0.
std::string text(const AcGePoint2d& point);
std::string text(const AcGePoint3d& point);
std::string text(const AcGePoint3dArray& points);

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

    AcDbObjectId id(Handle handle);
    AcDbObjectIdArray ids(const std::vector<Handle>& handles);
    /// Of the entities that were there from the beginning, vertices not counted.
    Handle at(std::size_t index) const { return entities_.at(index); }
    const std::vector<Handle>& all() const { return entities_; }

    /// World coordinates: ends, vertices, or the centre and what follows it.
    std::vector<AcGePoint3d> points(Handle handle);
    /// "0,0 10,0", a circle as "5,0 r3".
    std::string form(Handle handle);
    std::string forms(const std::vector<Handle>& handles);
    /// What the running command has drawn and not erased: "line 0,0 10,0; circle 5,0 r3", behind each of
    /// another colour than by layer "c" and its index.
    std::string drawn();
    std::vector<Handle> handles();
    bool hasTheFilesBytes() { return editor_.drawing().toBytes() == bytes_; }
    /// Whether undoing what was done gives the file's bytes.
    bool isUndoneToTheBytes();
    db::Drawing& drawing() { return editor_.drawing(); }

private:
    Editor editor_;
    std::string bytes_;
    std::vector<Handle> entities_;
    const db::Record* refused_ = nullptr;
};

} // namespace qx::tests
