#include "db/HandleIndex.h"

#include "db/HandleHash.h"

#include <algorithm>
#include <utility>

namespace qx::db {

void HandleIndex::build(const RecordChain& records) {
    constexpr std::size_t numbersPerRecord = 4, least = 64;
    *this = {};
    isBuilt_ = true;
    bound_ = std::max(least, numbersPerRecord * records.size());
    std::uint64_t largest = 0;
    for (const Record* each = records.first(); each; each = RecordChain::next(each))
        if (each->handle < bound_) largest = std::max(largest, each->handle);
    numbered_.resize(largest + 1);
    for (Record* each = records.first(); each; each = RecordChain::next(each))
        if (each->handle) add(each);
}

void HandleIndex::add(Record* record) {
    if (record->handle >= bound_) return addHashed(record);
    if (record->handle >= numbered_.size()) numbered_.resize(record->handle + 1);
    Record*& place = numbered_[record->handle];
    if (!place) place = record;
}

void HandleIndex::addHashed(Record* record) {
    if (2 * (hashedCount_ + 1) > hashed_.size()) grow();
    Record*& place = hashed_[placeOf(record->handle)];
    if (place) return;
    place = record;
    ++hashedCount_;
}

void HandleIndex::grow() {
    const std::vector<Record*> before =
        std::exchange(hashed_, std::vector<Record*>(std::max<std::size_t>(64, 2 * hashed_.size())));
    for (Record* each : before)
        if (each) hashed_[placeOf(each->handle)] = each;
}

/// Where it stands, or else would stand.
std::size_t HandleIndex::placeOf(std::uint64_t handle) const {
    const std::size_t last = hashed_.size() - 1;
    std::size_t place = HandleHash{}(handle)&last;
    while (hashed_[place] && hashed_[place]->handle != handle) place = (place + 1) & last;
    return place;
}

Record* HandleIndex::find(std::uint64_t handle) const {
    if (handle < numbered_.size()) return numbered_[handle];
    return handle < bound_ || hashed_.empty() ? nullptr : hashed_[placeOf(handle)];
}

} // namespace qx::db
