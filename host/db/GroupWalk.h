// Which tags of a record are the numbers of a list of values. Reading and writing back walk the same tags and
// hence meet the same values, whatever the counts in the file say.
#pragma once

#include "db/FieldTable.h"
#include "qxgroups.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace qx::db {

/// A group that begins a value.
struct ListedGroup {
    std::int16_t code;
    Role role;
    std::int16_t step = 10; ///< from the code of one coordinate to that of the next
};

/// The groups that count at a place, and how they change from tag to tag.
struct GroupGrammar {
    using Groups = std::span<const ListedGroup>;
    Groups first;
    /// From the tag on, itself included; null: always the first ones.
    Groups (*next)(Groups now, const dxf::Tag& tag) = nullptr;
};

/// A list among the fields of a class. Groups that it takes are not looked for among the others.
struct ListedGroups {
    std::uint16_t offset; ///< of the GroupList
    GroupGrammar grammar;
};

/// The mark before an object that another one holds.
constexpr int embeddedObject = 101;

/// Points and directions in the extended data: 1011 moves and turns, 1012 turns and scales, 1013 only turns.
extern const GroupGrammar xdataGrammar;
/// True for the tags behind the fields that a grammar is to see: the mark of an embedded object, and
/// coordinates. Those that are no numbers are passed over.
bool countsInTail(const dxf::Tag& tag);

/// How many numbers a value has.
unsigned numbersOf(Role role);

class GroupWalk {
public:
    explicit GroupWalk(const GroupGrammar& grammar) : grammar_{grammar}, groups_{grammar.first} {}

    /// A number of the list.
    struct Place {
        std::size_t index; ///< of the value
        unsigned axis;
        const ListedGroup* group;
    };
    /// The tag's place; empty for a tag that belongs to no value.
    std::optional<Place> step(const dxf::Tag& tag);

private:
    const GroupGrammar& grammar_;
    GroupGrammar::Groups groups_;
    std::size_t count_ = 0;
    const ListedGroup* begun_ = nullptr;
};

/// Puts a number where it belongs: at the end of the list, or into its last value.
void put(GroupList& list, const GroupWalk::Place& place, double number);

} // namespace qx::db
