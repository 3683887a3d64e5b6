// What has to be written differently so that a record's bytes say what its live object says: values that
// really differ are replaced, and groups that the file leaves out are put in where they belong.
#pragma once

#include "db/GroupWalk.h"
#include "db/Record.h"
#include "dbmain.h"
#include "dxf/Tag.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qx::db {

struct BlockDefinition;

struct Field;
struct FieldTable;
struct Slot;

/// Room for one tag or value, without an allocation: a save writes millions of them.
class ShortText {
public:
    ShortText() = default;
    explicit ShortText(std::string_view text) { add(text); }
    /// What does not fit is a mistake of the caller.
    ShortText& add(std::string_view text);
    std::string_view view() const { return {bytes_, size_}; }

private:
    char bytes_[55];
    std::uint8_t size_ = 0;
};

/// The shortest text that reads back as the same number, with a point or an exponent.
ShortText realText(double value);

/// The two lines of a tag.
std::string tagString(int code, std::string_view value, std::string_view lineEnd);

struct Patch {
    const char* at;       ///< in the record's bytes
    std::size_t replaced; ///< how many bytes go
    ShortText text;       ///< what comes
};

/// Patches one record after the other; keeps its room between them.
class Patcher {
public:
    /// `lineEnd` is what the drawing ends its lines with.
    explicit Patcher(std::string_view lineEnd) : lineEnd_{lineEnd} {}

    /// Patches in the order of their places; valid until the next call.
    const std::vector<Patch>& patchesFor(std::string_view bytes, AcDbObject& object);

private:
    /// How far the values of a list have been compared.
    struct ListPlace {
        const GroupList* list;
        GroupWalk walk;
        GroupWalk::Place last{};      ///< the last number met; no group before the first
        const char* behind = nullptr; ///< its tag
        unsigned seen = 0;            ///< a bit for each coordinate of the last value that the file has
    };
    void compareFields(std::string_view bytes);
    void compareSlot(std::size_t index, std::string_view text, const char* end);
    void compareVertex(const dxf::Tag& tag);
    void finishVertex();
    bool isAnyMissing() const;
    void insertMissing(std::string_view bytes);
    void insertMissing(const Field& field, std::size_t firstSlot, const char* anchor);
    void compareTail(const char* begin, const char* end);
    void compareListed(ListPlace& at, const dxf::Tag& tag, const GroupWalk::Place& place);
    void finishListed(ListPlace& at);
    void compareReal(std::string_view text, double value);
    void patch(const char* at, std::size_t replaced, const ShortText& text);

    std::string lineEnd_;
    std::vector<Patch> patches_;
    bool isInOrder_ = true;
    unsigned touched_ = 0; ///< see AcDbObject::touched()
    const FieldTable* table_ = nullptr;
    void* base_ = nullptr;
    GroupList* tail_ = nullptr;
    std::array<const char*, 64> seenAt_;  ///< per slot, one past its tag; null: not in the file
    std::array<int, 64> patchOf_;         ///< per slot, the patch that replaces its value; -1: none
    std::size_t vertex_ = 0;              ///< 1-based, of the vertex being compared
    const char* afterX_ = nullptr;        ///< behind its group 10
    bool isYMissing_ = false;             ///< so far
    const char* lastVertexTag_ = nullptr; ///< behind it, or behind a list; null: the file has none
    const char* defaultAnchor_ = nullptr;
};

/// What the version of a drawing wants a new object to have besides its data.
struct NewObjectForm {
    bool hasHandle = true, hasOwner = true, hasMarkers = true; ///< markers of subclasses
    std::string_view lineEnd = "\n";
};

/// The bytes of an object that the file does not have yet. An owner without a handle is left out.
std::string newObjectBytes(AcDbEntity& entity, const BlockDefinition& owner, const NewObjectForm& form);

} // namespace qx::db
