#include "ed/RecordSet.h"

#include <utility>

namespace qx::ed {

RecordSet::RecordSet(const db::Drawing& drawing, std::vector<db::Record*> members)
    : drawing_{&drawing}, members_{std::move(members)} {}

// Taking a new mark is how one learns whether somebody else has taken one.
void RecordSet::refreshMarks() {
    const std::uint32_t next = drawing_->nextMark();
    const bool undisturbed = mark_ != 0 && next == seen_ + 1;
    seen_ = next;
    if (undisturbed) return;
    mark_ = next;
    for (db::Record* each : members_) each->mark = mark_;
}

bool RecordSet::contains(const db::Record* record) {
    if (members_.empty()) return false;
    refreshMarks();
    return record->mark == mark_;
}

std::size_t RecordSet::add(std::span<db::Record* const> records) {
    refreshMarks();
    const std::size_t before = members_.size();
    for (db::Record* each : records) {
        if (each->mark == mark_) continue;
        each->mark = mark_;
        members_.push_back(each);
    }
    return members_.size() - before;
}

std::size_t RecordSet::remove(std::span<db::Record* const> records) {
    const std::uint32_t leaving = drawing_->nextMark();
    for (db::Record* each : records) each->mark = leaving;
    return std::erase_if(members_, [&](const db::Record* each) { return each->mark == leaving; });
}

} // namespace qx::ed
