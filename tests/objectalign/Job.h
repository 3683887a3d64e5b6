// What the alignments are given besides objects, in one short form for all of them, and what they give back.
#pragma once

#include "tests/objectalign/Sheet.h"

#include <optional>

namespace qx::tests {

enum class Entry {
    toLine, ///< one object
    atLine,
    atCircle,
    segmentToLine, ///< polylines by the segments at which they were picked
    segmentAtLine,
    segmentAtCircle,
    boundary, ///< a whole selection by its base line
    onto,
    away
};

/// Its text holds words such as "to=1.57 by=3": the target angle in radians, the spacing if it is adjusted;
/// "at" is the reference, the alignment point or the target, "from" the second point or the centre of the
/// circle, "pick" where a polyline was picked or what a whole selection is turned by.
struct Job {
    Job(Entry entry, const std::string& text);
    /// Within a command; one object, or all polylines, or a whole selection by the first of it. The k-th
    /// request is refused when that is not negative.
    void run(Sheet& sheet, const AcDbObjectIdArray& ids, AcDbObjectId line, int k = -1);

    Entry entry;
    double angle = 0, radius = 20;
    std::optional<double> spacing;
    AcGePoint3d at, from;
    AcGePoint2d pick;
    int status = 0;
    std::string handedOut; ///< a landing point, a reference or where the base line starts

private:
    void alignEach(const AcDbObjectIdArray& ids, AcDbObjectId line, const AcDbEntity* open);
    void alignWhole(const AcDbObjectIdArray& ids, AcDbObjectId secondLine, const AcDbEntity* open);
};

} // namespace qx::tests
