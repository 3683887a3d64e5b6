#include "db/GroupWalk.h"

namespace qx::db {

namespace {
constexpr ListedGroup xdataGroups[] = {
    {1011, Role::worldPoint}, {1012, Role::vector}, {1013, Role::direction}};
}

const GroupGrammar xdataGrammar{xdataGroups};

bool countsInTail(const dxf::Tag& tag) {
    if (tag.code == embeddedObject) return true;
    const bool isXDataPoint = tag.code >= 1011 && tag.code <= 1033;
    return (isXDataPoint || tag.code < 1000) && dxf::toReal(tag.value);
}

unsigned numbersOf(Role role) {
    switch (role) {
    case Role::worldPoint:
    case Role::vector:
    case Role::direction:
        return 3;
    case Role::flatPoint:
    case Role::flatVector:
        return 2;
    default:
        return 1;
    }
}

std::optional<GroupWalk::Place> GroupWalk::step(const dxf::Tag& tag) {
    if (grammar_.next) groups_ = grammar_.next(groups_, tag);
    for (const ListedGroup& each : groups_)
        if (each.code == tag.code) {
            begun_ = &each;
            return Place{count_++, 0, begun_};
        }
    for (unsigned axis = 1; begun_ && axis < numbersOf(begun_->role); ++axis)
        if (tag.code == begun_->code + static_cast<int>(axis) * begun_->step)
            return Place{count_ - 1, axis, begun_};
    return std::nullopt;
}

void put(GroupList& list, const GroupWalk::Place& place, double number) {
    if (place.axis == 0) list.values.push_back({{}, place.group->role, place.group->code});
    list.values.back().value[place.axis] = number;
}

} // namespace qx::db
