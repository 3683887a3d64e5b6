#include "ed/SelectionSets.h"

#include "ed/adsNames.h"

#include <utility>

namespace qx::ed {

bool SelectionSets::create(ads_name name, RecordSet set) {
    if (sets_.size() >= limit) return false;
    sets_.emplace(++lastNumber_, std::move(set));
    nameSet(name, lastNumber_);
    return true;
}

RecordSet* SelectionSets::find(const ads_name name) {
    const auto number = namedSet(name);
    const auto found = number ? sets_.find(*number) : sets_.end();
    return found == sets_.end() ? nullptr : &found->second;
}

bool SelectionSets::free(const ads_name name) {
    const auto number = namedSet(name);
    return number && sets_.erase(*number) > 0;
}

std::size_t SelectionSets::freeAll() {
    const std::size_t count = sets_.size();
    sets_.clear();
    return count;
}

} // namespace qx::ed
