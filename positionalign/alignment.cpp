#include "positionalign/alignment.h"

#include "kernel/entityAccess.h"
#include "kernel/groupLookup.h"
#include "positionalign/touchedGroups.h"

#include <iterator>

namespace qx::positionalign {
namespace {
constexpr AlignmentMove moves[] = {
    {Axis::x, Corner::centre, 0}, // 0 centre across
    {Axis::y, Corner::centre, 0}, // 1 centre up and down
    {Axis::y, Corner::max, -1},   // 2 top
    {Axis::x, Corner::min, +1},   // 3 left
    {Axis::x, Corner::max, -1},   // 4 right
    {Axis::y, Corner::min, +1},   // 5 bottom
};

/// Which part of the table an action takes, in the order of the action codes.
constexpr struct {
    std::size_t first, count;
} movesOfAction[] = {
    {0, 0}, // none
    {0, 1}, // horizontal centre
    {2, 1}, // top
    {3, 1}, // left
    {0, 2}, // centre
    {4, 1}, // right
    {1, 1}, // vertical centre
    {5, 1}, // bottom
};

double distanceFor(const AlignmentMove& move, double reference, const AcGePoint3d& base, double offset) {
    return coordinate(base, move.axis) - reference + move.offsetSign * offset;
}
} // namespace

std::span<const AlignmentMove> movesOf(Action action) {
    const auto code = static_cast<std::size_t>(action);
    if (code >= std::size(movesOfAction)) return {};
    return std::span{moves}.subspan(movesOfAction[code].first, movesOfAction[code].count);
}

bool takesOffset(Action action) {
    const auto steps = movesOf(action);
    return !steps.empty() && steps.front().offsetSign != 0;
}

Acad::ErrorStatus alignObject(AcDbObjectId id, const AcDbExtents& box, const AlignmentMove& move,
                              const AcGePoint3d& base, double offset) {
    const AcGePoint3d reference = cornerOf(box, move.reference);
    const double distance = distanceFor(move, coordinate(reference, move.axis), base, offset);
    return kernel::moveEntity(id, along(move.axis, distance, base.z - reference.z));
}

void alignGroups(const AcDbObjectIdArray& ids, const AlignmentMove& move, const AcGePoint3d& base,
                 double offset) {
    for (const AcDbObjectId group : touchedGroups(ids)) {
        const AcDbObjectIdArray members = kernel::groupMembers(group);
        if (members.isEmpty()) continue;
        const double reference = measured(kernel::rangeOf(members), move.axis).at(move.reference);
        const double distance = distanceFor(move, reference, base, offset);
        kernel::moveEntities(kernel::rangeOf(members), along(move.axis, distance));
    }
}

} // namespace qx::positionalign
