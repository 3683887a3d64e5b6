#include "positionalign/distribution.h"

#include "kernel/entityAccess.h"
#include "kernel/groupLookup.h"
#include "positionalign/touchedGroups.h"

#include <algorithm>
#include <vector>

namespace qx::positionalign {
namespace {
using Members = std::span<const AcDbObjectId>;

/// As it was measured before anything moved.
struct Item {
    double key;   ///< centre
    double width; ///< negative without extents
    Members members;
};

/// Ascending; a key that is not a number comes last, so that the order is one whatever the keys are.
bool isLess(const Item& a, const Item& b) { return a.key < b.key || (a.key == a.key && b.key != b.key); }

bool haveSameKey(const Item& a, const Item& b) { return !isLess(a, b) && !isLess(b, a); }

/// Items along one axis.
class Row {
public:
    Row(Axis axis, std::size_t items) : axis_{axis} { items_.reserve(items); }

    /// The members have to outlive the row. An item without members only counts.
    void add(Members members) {
        ++count_;
        if (members.empty()) return;
        const ItemExtent extent = measured(members, axis_);
        items_.push_back({extent.centre, extent.max - extent.min, members});
    }

    void distribute() {
        std::stable_sort(items_.begin(), items_.end(), isLess);
        items_.erase(std::unique(items_.begin(), items_.end(), haveSameKey), items_.end());
        if (items_.size() < 2) return;
        const double gap = gapBetween();
        for (std::size_t i = 1; i < items_.size(); ++i) follow(items_[i - 1], gap, items_[i]);
    }

private:
    double gapBetween() const {
        double widths = 0;
        for (const Item& each : items_) widths += each.width;
        const double span =
            measured(items_.back().members, axis_).max - measured(items_.front().members, axis_).min;
        return (span - widths) / (count_ - 1.0);
    }

    /// Measures both anew: the previous item has just moved, if it could, and a member may belong to both.
    void follow(const Item& previous, double gap, const Item& next) const {
        const double distance =
            measured(previous.members, axis_).max + gap - measured(next.members, axis_).min;
        kernel::moveEntities(next.members, along(axis_, distance));
    }

    Axis axis_;
    int count_ = 0; ///< of all items, those with equal keys included
    std::vector<Item> items_;
};
} // namespace

void distributeObjects(const AcDbObjectIdArray& ids, Axis axis) {
    const Members all = kernel::rangeOf(ids);
    Row row{axis, all.size()};
    for (std::size_t i = 0; i < all.size(); ++i) row.add(all.subspan(i, 1));
    row.distribute();
}

void distributeGroups(const AcDbObjectIdArray& ids, Axis axis) {
    std::vector<AcDbObjectIdArray> groups;
    for (const AcDbObjectId group : touchedGroups(ids)) groups.push_back(kernel::groupMembers(group));
    Row row{axis, groups.size()};
    for (const AcDbObjectIdArray& members : groups) row.add(kernel::rangeOf(members));
    row.distribute();
}

} // namespace qx::positionalign
