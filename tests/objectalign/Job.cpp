#include "tests/objectalign/Job.h"

#include "objectalign/alignAtPoint.h"
#include "objectalign/alignToLine.h"
#include "objectalign/pickedSegments.h"
#include "objectalign/wholeSelection.h"

#include <sstream>

namespace qx::tests {
using namespace objectalign;

Job::Job(Entry which, const std::string& text) : entry{which} {
    from = entry == Entry::atLine ? AcGePoint3d{1, 0, 0} : AcGePoint3d{0, -20, 0};
    std::istringstream words{text};
    for (std::string word; words >> word;) {
        const std::string key = word.substr(0, word.find('=')), value = word.substr(word.find('=') + 1);
        if (key == "to") angle = std::stod(value);
        if (key == "by") spacing = std::stod(value);
        if (key == "at") at = pointOf(value);
        if (key == "from") from = pointOf(value);
        if (key == "pick") pick = flatPointOf(value);
    }
}

void Job::run(Sheet& sheet, const AcDbObjectIdArray& ids, AcDbObjectId baseLine, int k) {
    const bool isToLine = entry == Entry::toLine || entry == Entry::segmentToLine || entry == Entry::boundary;
    const AcDbObjectPointer<AcDbEntity> open{isToLine ? baseLine : AcDbObjectId{}};
    sheet.refuse(k);
    if (entry >= Entry::boundary)
        alignWhole(ids, baseLine, open.object());
    else if (entry >= Entry::segmentToLine)
        alignSegments(ids, baseLine, open.object());
    else
        alignEach(ids, baseLine, open.object());
}

void Job::alignEach(const AcDbObjectIdArray& ids, AcDbObjectId baseLine, const AcDbEntity* open) {
    const double by = spacing.value_or(99);
    const bool adjusts = spacing.has_value();
    for (const AcDbObjectId id : ids) {
        AcGePoint3d landing;
        if (entry == Entry::toLine)
            status = alignObjectToBaseLine(id, {at.x, at.y}, angle, by, adjusts, *open, landing);
        else if (entry == Entry::atLine)
            status = alignObjectToGivenLine(id, angle, by, adjusts, at, from, baseLine);
        else
            status = alignObjectToGivenCircle(id, angle, by, adjusts, at, from, radius);
        if (entry == Entry::toLine && status == 0) handedOut += text(landing);
    }
}

void Job::alignSegments(const AcDbObjectIdArray& ids, AcDbObjectId baseLine, const AcDbEntity* open) {
    const double by = spacing.value_or(99);
    const bool adjusts = spacing.has_value();
    AcGePoint2dArray picks;
    for (int i = 0; i < ids.length(); ++i) picks.append(pick);
    AcDbObjectIdArray aligned;
    AcGePoint3dArray landings;
    if (entry == Entry::segmentToLine)
        status = alignPickedSegmentsToLine(ids, picks, angle, by, adjusts, at, *open, aligned, landings);
    else if (entry == Entry::segmentAtLine)
        status = alignPickedSegments(ids, picks, angle, by, adjusts, at, baseLine);
    else
        status = alignPickedSegmentsToCircle(ids, picks, angle, by, adjusts, at, from, radius);
    for (const AcGePoint3d& each : landings)
        handedOut += text(each) + (&each == landings.end() - 1 ? "" : " ");
    EXPECT_EQ(aligned.length(), landings.length());
}

void Job::alignWhole(const AcDbObjectIdArray& ids, AcDbObjectId secondLine, const AcDbEntity* open) {
    const double by = spacing.value_or(99);
    const bool adjusts = spacing.has_value();
    const AcGePoint2d target{at.x, at.y}, away{from.x, from.y};
    AcGePoint3d reference{-1, -1, -1};
    if (entry == Entry::boundary)
        status = alignToBoundary(ids, ids[0], angle, by, adjusts, *open, pick, reference);
    else if (entry == Entry::onto)
        status = alignOntoPoint(ids, ids[0], angle, by, adjusts, at, from, secondLine, pick);
    else
        status = alignAwayFromPoint(ids, ids[0], angle, by, adjusts, pick, target, away);
    handedOut = entry == Entry::boundary ? text(reference) : text(pick);
}

} // namespace qx::tests
