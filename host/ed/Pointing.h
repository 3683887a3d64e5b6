// What a mouse means at a prompt, as the answers that would be typed for it: an object under the cursor as
// its handle, so that the answers mean the same in any view and can be replayed as a script, or as its
// nearest point when it has no handle of its own; a point as its coordinates, exact where the cursor snaps;
// at a selection prompt two corners as a window or crossing.
#pragma once

#include "ed/Session.h"
#include "ed/objectSnap.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace qx::ed {

class QX_HOST_API Pointing {
public:
    /// Entities that may lie in the rectangle (world; only x and y count), in drawing order: more than do is
    /// no harm.
    using Candidates = std::function<std::vector<db::Record*>(const shape::Box& rectangle)>;
    Pointing(Session& session, Candidates candidates);

    struct Cursor {
        AcGePoint3d world;
        double pixel = 1;     ///< side of a pixel, in drawing units
        bool removes = false; ///< what is selected is taken out of the selection
        bool snaps = true;
    };

    /// The entity that a click would take; null where it would take none.
    db::Record* under(Ask ask, const Cursor& cursor) const;
    /// All that a click would take, with the groups that belong to it.
    std::vector<db::Record*> taken(Ask ask, const Cursor& cursor) const;
    /// The point that a click would give instead of the cursor's own. Only prompts for points snap.
    std::optional<Snap> snap(Ask ask, const Cursor& cursor) const;
    /// What the click answers, one text after the other; none when more clicks are needed. While no command
    /// runs nothing is answered, and what is clicked changes what is selected first.
    std::vector<std::string> click(Ask ask, const Cursor& cursor);

    /// The first corner of a rectangle that waits for its second one.
    const std::optional<AcGePoint3d>& corner() const { return corner_; }
    /// Gives the rectangle up.
    void forgetCorner() { corner_.reset(); }

private:
    std::vector<std::string> clickAtSelection(const Cursor& cursor);
    std::string answerForPick(db::Record* record, const Cursor& cursor) const;
    std::string answerForSelected(db::Record* record, const Cursor& cursor) const;
    void clickBetweenCommands(const Cursor& cursor);
    std::string answerFor(const AcGePoint3d& world) const;
    std::vector<db::Record*> within(const AcGePoint3d& corner, const AcGePoint3d& opposite) const;
    std::vector<db::Record*> aroundCursor(const Cursor& cursor, double reach) const;
    void select(const std::vector<db::Record*>& records, bool removes);

    Session& session_;
    Candidates candidates_;
    std::optional<AcGePoint3d> corner_;
};

} // namespace qx::ed
