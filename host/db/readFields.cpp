#include "db/FieldTable.h"

#include "db/GroupWalk.h"
#include "dbpl.h"
#include "dxf/Tag.h"

#include <algorithm>

namespace qx::db {

namespace {

void addSlots(const Field& field, std::vector<Slot>& slots) {
    using Form = Slot::Form;
    const auto add = [&](int code, std::size_t offset, Form form, int axes) {
        slots.push_back({static_cast<std::int16_t>(code), static_cast<std::uint16_t>(offset), form,
                         static_cast<std::uint8_t>(axes), field.fallback});
    };
    if (!field.hasValue()) return;
    if (field.role == Role::text) return add(field.code, field.offset, Form::text, 8);
    if (field.role == Role::integer) return add(field.code, field.offset, Form::integer, 8);
    if (field.role == Role::elevation) return add(field.code, field.offset, Form::real, 4);
    if (!field.isPoint()) return add(field.code, field.offset, Form::real, 8);
    const bool isDirection =
        field.role == Role::normal || field.role == Role::vector || field.role == Role::direction;
    for (int i = 0; i < 3; ++i)
        add(field.code + 10 * i, field.offset + static_cast<std::size_t>(i) * sizeof(double), Form::real,
            isDirection ? 8 : 1 << i);
    if (field.role == Role::normal) slots.back().fallback = 1;
    if (field.role == Role::vector || field.role == Role::direction)
        slots.back().fallback = slots[slots.size() - 2].fallback = 0;
}

bool isUntranslated(Role role) {
    return role == Role::normal || role == Role::vector || role == Role::direction ||
           role == Role::angleDegrees || role == Role::length || role == Role::height;
}

/// Reads one group into its slot; false when it should be a number and is none.
bool readSlot(const Slot& slot, std::string_view text, void* base) {
    if (slot.form == Slot::Form::text) {
        memberAt<std::string_view>(base, slot.offset) = text;
        return true;
    }
    if (slot.form == Slot::Form::integer) {
        const auto value = toInteger(text);
        if (value) memberAt<Adesk::Int32>(base, slot.offset) = *value;
        return value.has_value();
    }
    const auto value = dxf::toReal(text);
    if (value) memberAt<double>(base, slot.offset) = *value;
    return value.has_value();
}

/// Takes room for the vertices at once; a number that the record has no room for is not believed.
void reserveVertices(const VertexGroups& groups, std::string_view number, std::string_view bytes,
                     void* base) {
    constexpr std::size_t leastBytes = 6; // that a vertex takes in the file
    const auto count = static_cast<std::size_t>(std::max(toInteger(number).value_or(0), 0));
    memberAt<std::vector<AcDbPolyline::Vertex>>(base, groups.offset)
        .reserve(std::min(count, bytes.size() / leastBytes));
}

/// A vertex group: the first code starts a vertex, the others complete it. False for what is no number.
bool readVertexGroup(const VertexGroups& groups, const dxf::Tag& tag, void* base) {
    const auto value = dxf::toReal(tag.value);
    if (!value) return false;
    auto& vertices = memberAt<std::vector<AcDbPolyline::Vertex>>(base, groups.offset);
    auto& widths = memberAt<std::vector<AcDbPolyline::Widths>>(base, groups.widthsOffset);
    if (tag.code == 10)
        vertices.push_back({*value, 0, 0});
    else if (vertices.empty())
        return true;
    else if (tag.code == 20)
        vertices.back().y = *value;
    else if (tag.code == 42)
        vertices.back().bulge = *value;
    else {
        widths.resize(vertices.size());
        (tag.code == 40 ? widths.back().start : widths.back().end) = *value;
    }
    return true;
}

/// A number of the list; false for what is none.
bool readListed(const GroupWalk::Place& place, std::string_view text, GroupList& list) {
    const auto value = dxf::toReal(text);
    if (value) put(list, place, *value);
    return value.has_value();
}

} // namespace

FieldTable FieldTable::ofEntity(std::size_t plainSize, const std::vector<Field>& fields,
                                const VertexGroups* vertexGroups, const ListedGroups* listedGroups) {
    std::vector<Field> all{
        {Role::integer, 60, offsetof(EntityProperties, invisible)},
        {Role::integer, 62, offsetof(EntityProperties, colour), 256},
    };
    all.insert(all.end(), fields.begin(), fields.end());
    return {plainSize, std::move(all), vertexGroups, listedGroups};
}

FieldTable::FieldTable(std::size_t plain, std::vector<Field> list, const VertexGroups* vertexGroups,
                       const ListedGroups* listedGroups)
    : plainSize{plain}, fields{std::move(list)}, vertices{vertexGroups}, lists{listedGroups} {
    slotByCode.fill(noSlot);
    if (lists) listOffset = lists->offset;
    for (const Field& field : fields) {
        addSlots(field, slots);
        if (field.role == Role::worldPoint || field.role == Role::ocsPoint)
            points.push_back({field.offset, field.role == Role::worldPoint, field.guard});
        if (isUntranslated(field.role)) untranslated.push_back(field);
        if (field.role == Role::normal) normal = &field;
        if (field.role == Role::elevation) elevation = &field;
    }
    for (std::size_t i = 0; i < slots.size(); ++i)
        slotByCode[static_cast<std::size_t>(slots[i].code)] = static_cast<std::uint8_t>(i);
}

ReadFields readFields(std::string_view bytes, const FieldTable& table, void* base) {
    ReadFields result;
    FieldTags tags{bytes};
    dxf::Tag tag;
    std::optional<GroupWalk> walk;
    if (table.lists) walk.emplace(table.lists->grammar);
    while (tags.next(tag)) {
        if (tag.code == 8) result.layer = tag.value;
        const std::uint8_t slot = table.slotOf(tag.code);
        bool good = true;
        if (const auto place = walk ? walk->step(tag) : std::nullopt)
            good = readListed(*place, tag.value, memberAt<GroupList>(base, table.lists->offset));
        else if (slot != FieldTable::noSlot)
            good = readSlot(table.slots[slot], tag.value, base);
        else if (table.vertices && table.vertices->holds(tag.code))
            good = readVertexGroup(*table.vertices, tag, base);
        else if (table.vertices && tag.code == VertexGroups::number)
            reserveVertices(*table.vertices, tag.value, bytes, base);
        if (!good) {
            result.fault = tag.value.data();
            return result;
        }
    }
    result.isGroupOpen = tags.isGroupOpen();
    if (tags.end()) result.tail = bytes.substr(static_cast<std::size_t>(tags.end() - bytes.data()));
    return result;
}

Adesk::Int32 presentGroups(std::string_view bytes, std::initializer_list<int> codes) {
    Adesk::Int32 present = 0;
    FieldTags tags{bytes};
    for (dxf::Tag tag; tags.next(tag);) {
        const auto found = std::ranges::find(codes, tag.code);
        if (found != codes.end()) present |= 1 << (found - codes.begin());
    }
    return present;
}

std::optional<Adesk::Int32> toInteger(std::string_view text) {
    const auto value = dxf::toReal(text);
    if (!value || !(*value >= -2147483648.0 && *value <= 2147483647.0)) return std::nullopt;
    return static_cast<Adesk::Int32>(*value);
}

std::unique_ptr<GroupList> readTail(std::string_view bytes, const GroupGrammar& grammar) {
    auto found = std::make_unique<GroupList>();
    GroupWalk walk{grammar};
    dxf::TagCursor cursor{bytes.data(), bytes.data() + bytes.size()};
    for (dxf::Tag tag; cursor.next(tag);) {
        const auto place = countsInTail(tag) ? walk.step(tag) : std::nullopt;
        if (place) readListed(*place, tag.value, *found);
    }
    if (found->values.empty()) return nullptr;
    return found;
}

} // namespace qx::db
