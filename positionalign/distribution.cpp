#include "positionalign/distribution.h"

#include "kernel/entityAccess.h"
#include "kernel/groupLookup.h"
#include "positionalign/touchedGroups.h"

#include <algorithm>
#include <vector>

namespace qx::positionalign {
namespace {
/// A run of the list of all members, as it was measured before anything moved.
struct Item {
    double key;   ///< centre
    double width; ///< negative without extents
    int begin, end;
};

/// Ascending; a key that is not a number comes last, so that the order is one whatever the keys are.
bool isLess(double a, double b) { return a < b || (a == a && b != b); }

bool comesBefore(const Item& a, const Item& b) {
    if (isLess(a.key, b.key)) return true;
    return !isLess(b.key, a.key) && a.begin < b.begin;
}

bool haveSameKey(const Item& a, const Item& b) { return !isLess(a.key, b.key) && !isLess(b.key, a.key); }

/// Items along one axis. Their members are runs of one list, which outlives the row.
class Row {
public:
    Row(Axis axis, const AcDbObjectIdArray& members) : axis_{axis}, members_{kernel::rangeOf(members)} {}

    void reserve(int items) { items_.reserve(static_cast<std::size_t>(items)); }

    /// Takes the members from `begin` to before `end` as the next item. One without members only counts.
    void add(int begin, int end) {
        ++count_;
        if (begin == end) return;
        Item item{0, 0, begin, end};
        const ItemExtent extent = now(item);
        item.key = extent.centre;
        item.width = extent.max - extent.min;
        items_.push_back(item);
    }

    void distribute() {
        std::sort(items_.begin(), items_.end(), comesBefore);
        items_.erase(std::unique(items_.begin(), items_.end(), haveSameKey), items_.end());
        if (items_.size() < 2) return;
        const double gap = gapBetween();
        for (std::size_t i = 1; i < items_.size(); ++i) follow(items_[i - 1], gap, items_[i]);
    }

private:
    std::span<const AcDbObjectId> membersOf(const Item& item) const {
        return members_.subspan(static_cast<std::size_t>(item.begin),
                                static_cast<std::size_t>(item.end - item.begin));
    }
    ItemExtent now(const Item& item) const { return measured(membersOf(item), axis_); }

    double gapBetween() const {
        double widths = 0;
        for (const Item& each : items_) widths += each.width;
        const double span = now(items_.back()).max - now(items_.front()).min;
        return (span - widths) / (count_ - 1.0);
    }

    /// Measures both anew: the previous item has just moved, if it could, and a member may belong to both.
    void follow(const Item& previous, double gap, const Item& next) const {
        const double distance = now(previous).max + gap - now(next).min;
        kernel::transformEntities(membersOf(next), AcGeMatrix3d{}.setToTranslation(along(axis_, distance)));
    }

    Axis axis_;
    std::span<const AcDbObjectId> members_;
    int count_ = 0; ///< of all items, those with equal keys included
    std::vector<Item> items_;
};
} // namespace

void distributeObjects(const AcDbObjectIdArray& ids, Axis axis) {
    Row row{axis, ids};
    row.reserve(ids.length());
    for (int i = 0; i < ids.length(); ++i) row.add(i, i + 1);
    row.distribute();
}

void distributeGroups(const AcDbObjectIdArray& ids, Axis axis) {
    AcDbObjectIdArray members;
    std::vector<int> ends;
    for (const AcDbObjectId group : touchedGroups(ids)) {
        members.append(kernel::groupMembers(group));
        ends.push_back(members.length());
    }
    Row row{axis, members};
    int begin = 0;
    for (const int end : ends) {
        row.add(begin, end);
        begin = end;
    }
    row.distribute();
}

} // namespace qx::positionalign
