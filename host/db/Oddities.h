// Gathers, while a drawing is read, what a person had better know before working on it: handles that are
// given twice, entities without one, and objects that are kept but can't be selected, so that they stay
// behind when all around them moves. Nothing of it is repaired.
#pragma once

#include "db/Record.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace qx::db {

/// Mostly small numbers without large gaps.
class HandleSet {
public:
    /// False when it was there already.
    bool add(std::uint64_t handle);

private:
    std::vector<std::uint64_t> bits_;
    std::unordered_set<std::uint64_t> large_;
};

class Oddities {
public:
    explicit Oddities(Drawing& drawing) : drawing_{drawing} {}

    /// A record has been read, its handle and its owner are known.
    void note(const Record* record, std::string_view bytes);
    /// Everything has been read: makes the findings.
    void report();

private:
    void reportHandles() const;
    void reportKeptOnly() const;
    std::vector<const Record*> keptOnlyMembersOfGroups() const;
    /// "HATCH 3, DIMENSION 2": the most frequent first.
    std::string classesOf(const std::vector<const Record*>& records) const;

    Drawing& drawing_;
    HandleSet handles_;
    std::vector<const Record*> repeats_;    ///< whose handle another record has before them
    std::vector<const Record*> handleless_; ///< entities
    std::vector<const Record*> keptOnly_;   ///< in model space
    bool hasGroups_ = false;
};

} // namespace qx::db
