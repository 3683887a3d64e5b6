// Field tables: which groups of a class are numbers or names that the host works with, and what they mean.
// One table per class drives reading, writing back and moving; groups that no table names survive untouched.
//
// A table speaks of a plain struct (the class's Data): a field is an offset into it. Values stay as the file
// has them, angles in degrees and points in the frame that the file uses, so that what was not changed is
// written back as it stood.
#pragma once

#include "dbmain.h"
#include "dxf/Tag.h"
#include "qxgroups.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <vector>

namespace qx::db {

enum class Role : std::uint8_t {
    worldPoint,   ///< three numbers, moves with the matrix
    ocsPoint,     ///< three numbers in the object coordinate system of the class's normal
    elevation,    ///< one number: how high the object's plane lies along the normal
    normal,       ///< the extrusion direction: turns, and looks the other way when mirrored
    vector,       ///< three numbers in world coordinates: turns and scales, but does not move
    direction,    ///< the same of a length that no scale changes
    angleDegrees, ///< counter-clockwise about the normal, from the object coordinate system's x axis
    length,       ///< a number that scales
    height,       ///< a number along the normal: scales, and changes its sign when mirrored
    plain,        ///< a number that no motion changes
    integer,      ///< an Adesk::Int32
    text,         ///< a std::string_view into the file's bytes; never written
    subclass,     ///< no value: the marker before the fields that follow, for objects that are written anew
    vertices,     ///< no value: where the vertices stand among the fields

    // In lists only.
    flatPoint,       ///< two numbers in the object coordinate system, at the height of its plane
    flatVector,      ///< two numbers, a vector in that plane
    angleRadians,    ///< as angleDegrees
    arcDegrees,      ///< an end of an arc: an angle that keeps its whole turns, for the other end's sake
    clockwiseDegrees ///< the same counted the other way round
};

/// Integers of the class of which one must have a bit of the mask for a field to mean anything.
struct Guard {
    std::uint16_t either, or_;
    Adesk::Int32 mask = -1;
};

struct Field {
    Role role;
    std::int16_t code;
    std::uint16_t offset;
    double fallback = 0;          ///< what a missing group means; of vectors the x, of points each coordinate
    const char* marker = nullptr; ///< of a subclass
    const Guard* guard = nullptr; ///< null: the field always counts
    constexpr bool isPoint() const {
        return role == Role::worldPoint || role == Role::ocsPoint || role == Role::normal ||
               role == Role::vector || role == Role::direction;
    }
    /// False for marks between the fields.
    constexpr bool hasValue() const { return role != Role::subclass && role != Role::vertices; }
};

/// One group of a field: its code, and where its value is.
struct Slot {
    enum class Form : std::uint8_t { real, integer, text };
    std::int16_t code;
    std::uint16_t offset;
    Form form;
    std::uint8_t axes; ///< which changes can reach it, as in AcDbObject::touched()
    double fallback;
};

/// Vertices in one object: groups 10 (starts one), 20, the bulge 42, and the widths 40 and 41, which most
/// polylines leave out; their number in group 90.
struct VertexGroups {
    std::uint16_t offset;       ///< of the std::vector<AcDbPolyline::Vertex>
    std::uint16_t widthsOffset; ///< of the std::vector<AcDbPolyline::Widths>, which may be the shorter one
    static constexpr int number = 90;
    static bool holds(int group) {
        return group == 10 || group == 20 || group == 42 || group == 40 || group == 41;
    }
};

struct GroupGrammar;
struct ListedGroups;
extern const GroupGrammar xdataGrammar;

/// A point among the fields, as motions see it.
struct PointField {
    std::uint16_t offset;
    bool isWorld; ///< else in object coordinates
    const Guard* guard;
};

struct FieldTable {
    static constexpr std::uint8_t noSlot = 0xff;
    static constexpr int codes = 400;

    /// `plainSize` is the size of the struct as far as it can be copied byte by byte: up to the vertices if
    /// or the list, if any.
    FieldTable(std::size_t plainSize, std::vector<Field> fields, const VertexGroups* vertexGroups = nullptr,
               const ListedGroups* listedGroups = nullptr);
    /// The same, with the fields of EntityProperties before the others: the struct begins with one.
    static FieldTable ofEntity(std::size_t plainSize, const std::vector<Field>& fields,
                               const VertexGroups* vertexGroups = nullptr,
                               const ListedGroups* listedGroups = nullptr);

    std::uint8_t slotOf(int code) const {
        return static_cast<unsigned>(code) < codes ? slotByCode[static_cast<std::size_t>(code)] : noSlot;
    }

    /// False for classes that are only kept.
    bool isMovable() const { return !points.empty() || !untranslated.empty() || vertices; }

    std::size_t plainSize;
    std::vector<Field> fields;
    std::vector<Slot> slots;
    std::array<std::uint8_t, codes> slotByCode;
    const VertexGroups* vertices = nullptr;
    const ListedGroups* lists = nullptr;
    const GroupGrammar* tail = &xdataGrammar; ///< of what stands behind the fields
    std::uint16_t listOffset = 0;             ///< of the list that they fill; 0: none
    std::vector<PointField> points;           ///< those of `fields` that every motion reaches
    std::vector<Field> untranslated;          ///< those that a translation leaves alone: they turn or scale
    const Field* normal = nullptr;            ///< one of the latter
    const Field* elevation = nullptr;         ///< the one that lifts the plane
};

/// The member of type T at that offset.
template <class T> T& memberAt(void* base, std::size_t offset) {
    return *reinterpret_cast<T*>(static_cast<char*>(base) + offset);
}

/// The object's own list of values; null for the many classes that have none.
inline GroupList* listOf(const Fields& fields) {
    const std::uint16_t offset = fields.table->listOffset;
    return offset != 0 ? &memberAt<GroupList>(fields.base, offset) : nullptr;
}

/// Calls `visit` with each value of the lists of an object: its own, and those behind its fields.
template <class Visit> void forEachListed(const Fields& fields, Visit&& visit) {
    for (GroupList* list : {listOf(fields), fields.tail})
        if (list)
            for (GroupValue& each : list->values) visit(each);
}

/// What stands between 102 { and 102 } belongs to an application; such groups may hold others.
class ApplicationGroups {
public:
    /// To be called with each tag of a record.
    void step(const dxf::Tag& tag) {
        if (tag.code != 102) return;
        const std::string_view mark = dxf::trimmed(tag.value);
        if (mark.starts_with('{')) ++depth_;
        if (mark.starts_with('}') && depth_ > 0) --depth_;
    }
    bool isInside() const { return depth_ > 0; }

private:
    std::size_t depth_ = 0;
};

/// Walks the tags of a record that can be fields: application groups are passed over, and the walk ends
/// before embedded objects and extended data, whose groups mean something else.
class FieldTags {
public:
    explicit FieldTags(std::string_view bytes) : cursor_{bytes.data(), bytes.data() + bytes.size()} {}
    /// False at the end, and from then on.
    bool next(dxf::Tag& tag) {
        while (!end_ && cursor_.next(tag)) {
            if (tag.code == 101 || tag.code >= 1000)
                end_ = tag.begin;
            else if (groups_.step(tag); !groups_.isInside())
                return true;
        }
        return false;
    }
    /// Where an embedded object or extended data begin, once the walk has ended; null when there are neither.
    const char* end() const { return end_; }
    /// True, once the walk has ended, when an application group was not closed: whatever is behind its
    /// beginning was passed over.
    bool isGroupOpen() const { return groups_.isInside(); }

private:
    dxf::TagCursor cursor_;
    const char* end_ = nullptr;
    ApplicationGroups groups_;
};

/// Which of the groups stand among a record's fields: a bit for each, in the order of the codes.
Adesk::Int32 presentGroups(std::string_view bytes, std::initializer_list<int> codes);

/// What readFields() found besides the fields.
struct ReadFields {
    const char* fault = nullptr; ///< the value that is no number; then what was read is not to be used
    bool isGroupOpen = false;    ///< as FieldTags says; the same holds
    std::string_view layer;
    std::string_view tail; ///< of the bytes: embedded object and extended data
};

/// Reads the fields of a record's bytes into `base`. Extended data, application groups and embedded objects
/// are passed over.
ReadFields readFields(std::string_view bytes, const FieldTable& table, void* base);

/// An integer as a field holds it, without what stands behind the point; empty for what is none or too large.
std::optional<Adesk::Int32> toInteger(std::string_view text);

/// The numbers that move in an embedded object and extended data; null when there are none.
std::unique_ptr<GroupList> readTail(std::string_view bytes, const GroupGrammar& grammar);

/// What a change can reach in a live object (fields, vertices, lists), as so many
/// bytes, a multiple of 8: how many, copied out, and exchanged with bytes that were copied out of the same
/// object.
std::size_t stateSize(AcDbObject& object);
void saveState(AcDbObject& object, std::byte* to);
void swapState(AcDbObject& object, std::byte* with);

} // namespace qx::db
