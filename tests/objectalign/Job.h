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
    away,
    count
};

/// Its text holds words such as "to=1.57 by=3": the target angle in radians, the spacing if it is adjusted;
/// "at" is the reference, the alignment point or the target, "from" the second point or the centre of the
/// circle, "pick" where a polyline was picked or what a whole selection is turned by.
struct Job {
    Job(Entry entry, const std::string& text);
    /// Within a command; all are aligned, a whole selection by the first of them. The k-th request is refused
    /// when that is not negative.
    void run(Sheet& sheet, const AcDbObjectIdArray& ids, AcDbObjectId baseLine, int k = -1);

    Entry entry;
    double angle = 0, radius = 20;
    std::optional<double> spacing;
    AcGePoint3d at, from;
    AcGePoint2d pick;
    int status = 0;
    std::string handedOut; ///< a landing point, a reference or where the base line starts

private:
    void alignWhole(const AcDbObjectIdArray& ids, AcDbObjectId secondLine, const AcDbEntity* open);
    void alignSegments(const AcDbObjectIdArray& ids, AcDbObjectId baseLine, const AcDbEntity* open);
    void alignEach(const AcDbObjectIdArray& ids, AcDbObjectId baseLine, const AcDbEntity* open);
};

} // namespace qx::tests
