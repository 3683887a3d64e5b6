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

void Job::run(Sheet& sheet, const AcDbObjectIdArray& ids, AcDbObjectId line, int k) {
    const bool isToLine = entry == Entry::toLine || entry == Entry::segmentToLine || entry == Entry::boundary;
    const AcDbObjectPointer<AcDbEntity> open{isToLine ? line : AcDbObjectId{}};
    sheet.refuse(k);
    entry < Entry::boundary ? alignEach(ids, line, open.object()) : alignWhole(ids, line, open.object());
}

void Job::alignEach(const AcDbObjectIdArray& ids, AcDbObjectId line, const AcDbEntity* open) {
    const double by = spacing.value_or(99);
    const bool adjusts = spacing.has_value();
    AcGePoint2dArray picks;
    for (int i = 0; i < ids.length(); ++i) picks.append(pick);
    AcDbObjectIdArray aligned;
    AcGePoint3dArray landings;
    AcGePoint3d landing;
    if (entry == Entry::toLine)
        status = alignObjectToBaseLine(ids[0], {at.x, at.y}, angle, by, adjusts, *open, landing);
    if (entry == Entry::atLine) status = alignObjectToGivenLine(ids[0], angle, by, adjusts, at, from, line);
    if (entry == Entry::atCircle)
        status = alignObjectToGivenCircle(ids[0], angle, by, adjusts, at, from, radius);
    if (entry == Entry::segmentToLine)
        status = alignPickedSegmentsToLine(ids, picks, angle, by, adjusts, at, *open, aligned, landings);
    if (entry == Entry::segmentAtLine) status = alignPickedSegments(ids, picks, angle, by, adjusts, at, line);
    if (entry == Entry::segmentAtCircle)
        status = alignPickedSegmentsToCircle(ids, picks, angle, by, adjusts, at, from, radius);
    if (entry == Entry::toLine && status == 0) landings.append(landing);
    for (const AcGePoint3d& each : landings) handedOut += (handedOut.empty() ? "" : " ") + text(each);
}

void Job::alignWhole(const AcDbObjectIdArray& ids, AcDbObjectId secondLine, const AcDbEntity* open) {
    const double by = spacing.value_or(99);
    const bool adjusts = spacing.has_value();
    const AcGePoint2d target{at.x, at.y}, away{from.x, from.y};
    AcGePoint3d reference{-1, -1, -1};
    if (entry == Entry::boundary)
        status = alignToBoundary(ids, ids[0], angle, by, adjusts, *open, pick, reference);
    if (entry == Entry::onto)
        status = alignOntoPoint(ids, ids[0], angle, by, adjusts, at, from, secondLine, pick);
    if (entry == Entry::away)
        status = alignAwayFromPoint(ids, ids[0], angle, by, adjusts, pick, target, away);
    handedOut = entry == Entry::boundary ? text(reference) : text(pick);
}

} // namespace qx::tests
