// Records in the order in which they were added, each once. Who belongs to the set is marked in the records
// themselves; when another walk has used the marks since, they are set anew before they are asked again,
// which costs one pass over the set.
#pragma once

#include "db/Drawing.h"

#include <span>
#include <vector>

namespace qx::ed {

class QX_HOST_API RecordSet {
public:
    explicit RecordSet(const db::Drawing* drawing = nullptr) : drawing_{drawing} {}
    RecordSet(const db::Drawing& drawing, std::vector<db::Record*> members);

    const std::vector<db::Record*>& members() const { return members_; }
    std::size_t size() const { return members_.size(); }
    bool isEmpty() const { return members_.empty(); }
    const db::Drawing* drawing() const { return drawing_; }

    bool contains(const db::Record* record);
    /// How many of them were not in the set before.
    std::size_t add(std::span<db::Record* const> records);
    /// How many of them were in the set.
    std::size_t remove(std::span<db::Record* const> records);
    void clear() {
        members_.clear();
        mark_ = 0; // the records still have it
    }

private:
    void refreshMarks();

    const db::Drawing* drawing_;
    std::vector<db::Record*> members_;
    std::uint32_t mark_ = 0; ///< in the records of the members, as long as no other walk began
    std::uint32_t seen_ = 0; ///< the drawing's last mark that this set knows of
};

} // namespace qx::ed
