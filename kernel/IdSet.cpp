#include "kernel/IdSet.h"

#include <bit>
#include <cstdint>

namespace qx::kernel {

IdSet::IdSet(const AcDbObjectIdArray& ids) {
    const std::size_t slots = std::bit_ceil(static_cast<std::size_t>(ids.length()) * 2 + 2);
    slots_.resize(slots);
    shift_ = 64 - static_cast<unsigned>(std::bit_width(slots - 1));
    for (int i = 0; i < ids.length(); ++i)
        if (!ids[i].isNull()) slots_[slotOf(ids[i])] = ids[i];
}

std::size_t IdSet::slotOf(AcDbObjectId id) const {
    // Ids are evenly spaced; multiplying by 2^64 over the golden ratio spreads such numbers over the high
    // bits.
    const std::uint64_t hash = static_cast<std::uint64_t>(id.asOldId()) * 0x9E3779B97F4A7C15u;
    std::size_t slot = static_cast<std::size_t>(hash >> shift_);
    while (!slots_[slot].isNull() && !(slots_[slot] == id)) slot = (slot + 1) & (slots_.size() - 1);
    return slot;
}

} // namespace qx::kernel
