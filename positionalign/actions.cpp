#include "positionalign/actions.h"

#include "kernel/entityAccess.h"
#include "positionalign/alignment.h"
#include "positionalign/distribution.h"

#include <optional>

namespace qx::positionalign {
namespace {
/// Along which axis the action distributes; nothing for an alignment.
std::optional<Axis> distributionAxis(Action action) {
    if (action == Action::horizontalDistribution) return Axis::x;
    if (action == Action::verticalDistribution) return Axis::y;
    return std::nullopt;
}

/// All moves of an object start from the box that it had before the first of them, so that centring both ways
/// carries it to the base point's height twice over.
void applyToObjects(const PositionAlignSettings& settings, const AcDbObjectIdArray& ids,
                    const AcGePoint3d& base) {
    const auto moves = movesOf(settings.action);
    for (const AcDbObjectId id : ids) {
        AcDbExtents box;
        if (kernel::readExtents(id, box) != Acad::eOk) return;
        for (const AlignmentMove& move : moves) alignObject(id, box, move, base, settings.offset);
    }
    if (const auto axis = distributionAxis(settings.action)) distributeObjects(ids, *axis);
}

/// Each move takes all groups, and measures them, before the next one begins.
void applyToGroups(const PositionAlignSettings& settings, const AcDbObjectIdArray& ids,
                   const AcGePoint3d& base) {
    for (const AlignmentMove& move : movesOf(settings.action)) alignGroups(ids, move, base, settings.offset);
    if (const auto axis = distributionAxis(settings.action)) distributeGroups(ids, *axis);
}
} // namespace

void applyAction(const PositionAlignSettings& settings, const AcDbObjectIdArray& ids,
                 const AcGePoint3d& base) {
    if (settings.mode == SelectionMode::objects) applyToObjects(settings, ids, base);
    if (settings.mode == SelectionMode::groups) applyToGroups(settings, ids, base);
}

} // namespace qx::positionalign
