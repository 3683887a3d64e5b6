// Gathers, while a drawing is read, what a person had better know before working on it: handles that are
// given twice, entities without one, owners, blocks and members of groups that are not there, parts that
// belong to nothing, definitions without an end, what stands outside of all sections, and objects that are
// kept but can't be selected, so that they stay behind when all around them moves. Nothing of it is repaired,
// and of what is frequent the first places are told and the others counted.
#pragma once

#include "db/HandleHash.h"
#include "db/Record.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace qx::db {

/// Mostly small numbers without large gaps.
class HandleSet {
public:
    /// False when it was there already.
    bool add(std::uint64_t handle);
    bool contains(std::uint64_t handle) const;

private:
    std::vector<std::uint64_t> bits_;
    std::unordered_set<std::uint64_t, HandleHash> large_;
};

class Oddities {
public:
    explicit Oddities(Drawing& drawing) : drawing_{drawing} {}

    /// A record has been read, its handle and its owner are known.
    void note(const Record* record, std::string_view bytes);
    /// The record stands outside of all sections.
    void noteOutside(const Record* record) { outside_.push_back(record); }
    /// The entity names an owner that is not there.
    void noteLostOwner(const Record* record) { ownerless_.push_back(record); }
    /// An insertion of that block, as the file spells it.
    void noteInsertion(const Record* record, std::string_view block);
    /// A vertex, attribute or sequence end that no entity takes.
    void noteStrayPart(const Record* record) { strayParts_.push_back(record); }
    /// The block's definition goes on where another one begins, or to the end of its section.
    void noteEndlessBlock(const Record* record) { endlessBlocks_.push_back(record); }
    /// The layer or block has the name of one before it.
    void noteSameName(const Record* record) { sameNames_.push_back(record); }
    /// All records will come a second time; those outside of all sections won't.
    void forgetRecords();
    /// Everything has been read: makes the findings.
    void report();

private:
    void reportHandles() const;
    void reportLostMembers() const;
    std::size_t lostMembersOf(const Record* group) const;
    void reportLostBlocks() const;
    /// One finding for all of them, with the line of the first: "3 entities have ...".
    void reportAll(const std::vector<const Record*>& records, const char* one, const char* many) const;
    void reportKeptOnly() const;
    std::vector<const Record*> keptOnlyMembersOfGroups() const;
    /// "HATCH 3, DIMENSION 2": the most frequent first.
    std::string classesOf(const std::vector<const Record*>& records) const;

    struct Insertions {
        const Record* first;
        std::size_t count = 0;
    };

    Drawing& drawing_;
    HandleSet handles_, others_; ///< of all records; of those that groups can't have as members
    std::unordered_map<std::string_view, Insertions> insertions_;                     ///< by the block's name
    std::array<std::pair<const std::string_view, Insertions>*, 64> lastInsertions_{}; ///< few names, often
    std::vector<const Record*> strayParts_, endlessBlocks_;
    std::vector<const Record*> repeats_;    ///< whose handle another record has before them
    std::vector<const Record*> handleless_; ///< entities
    std::vector<const Record*> ownerless_;
    std::vector<const Record*> outside_;
    std::vector<const Record*> sameNames_;
    std::vector<const Record*> groups_;
    std::vector<const Record*> keptOnly_; ///< in model space
};

} // namespace qx::db
