// Finds records by handle. Handles are mostly small numbers without large gaps, and those stand in a table
// under their own number; only the others are hashed.
#pragma once

#include "db/Record.h"

#include <cstdint>
#include <vector>

namespace qx::db {

class HandleIndex {
public:
    /// Anew, with all records that have a handle; of two that have the same one, with the first.
    void build(const RecordChain& records);
    bool isBuilt() const { return isBuilt_; }
    /// One more record, as above.
    void add(Record* record);
    /// Null when no record has that handle.
    Record* find(std::uint64_t handle) const;

private:
    void addHashed(Record* record);
    void grow();
    std::size_t placeOf(std::uint64_t handle) const;

    bool isBuilt_ = false;
    std::uint64_t bound_ = 0;       ///< of handles that stand under their number
    std::vector<Record*> numbered_; ///< up to the largest so far
    std::vector<Record*> hashed_;   ///< open addressing, at most half full
    std::size_t hashedCount_ = 0;
};

} // namespace qx::db
