// One record per group-0 tag of the file, in file order: entities, table records, section marks, objects. The
// records cut the file into spans without gaps: a record's span ends where the next one begins. New objects
// get records too, without a span. Records never move, so that an object id can be a pointer to one.
#pragma once

#include "dbid.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

class AcDbObject;

namespace qx::db {

class Drawing;

/// What a record is, as far as the store handles it. Other names are kept under otherEntity or otherObject.
enum class Kind : std::uint8_t {
    section,
    endSection,
    table,
    endTable,
    endOfFile,
    block,
    endBlock,
    blockRecord,
    layer,
    dictionary,
    group,
    sequenceEnd, // parts of entities
    vertex,
    attribute,
    line, // main entities
    point,
    circle,
    arc,
    lwPolyline,
    text,
    solid,
    trace,
    face,
    ray,
    xline,
    attributeDefinition,
    insert,
    spline,
    leader,
    hatch,
    polyline,
    ellipse,
    mtext,
    dimension,
    otherEntity,
    otherObject,
};

/// Entities of their own: not vertices, attributes or structure.
constexpr bool isMainEntity(Kind kind) { return kind >= Kind::line && kind <= Kind::otherEntity; }
/// Kinds whose live object is an AcDbEntity.
constexpr bool isEntity(Kind kind) { return kind >= Kind::vertex && kind <= Kind::otherEntity; }

/// Kinds that look as the definition of a block does.
constexpr bool showsBlock(Kind kind) { return kind == Kind::insert || kind == Kind::dimension; }

/// 40 bytes, since there are millions of them.
struct Record {
    enum Flag : std::uint8_t {
        erased = 1,
        openForWrite = 2,
        openForNotify = 4,
        changed = 8,  ///< the live object may differ from the file
        isNew = 16,   ///< made in this session; has no span
        unusable = 32 ///< its fields could not be read; kept as it is
    };
    static constexpr std::uint16_t maxReaders = 256;

    const char* begin = nullptr; ///< first byte of its span
    std::uint64_t handle = 0;    ///< 0: the file gives none
    AcDbObject* live = nullptr;  ///< made at the first opening
    Record* owner = nullptr;     ///< block record of an entity, header of a vertex or attribute
    Kind kind = Kind::otherObject;
    std::uint8_t flags = 0;
    std::uint16_t readers = 0;
    std::uint32_t mark = 0; ///< generation of the last walk that met it

    bool has(Flag flag) const { return (flags & flag) != 0; }
    void set(Flag flag, bool on = true) {
        flags = static_cast<std::uint8_t>(on ? flags | flag : flags & ~flag);
    }
    bool isOpen() const { return readers || (flags & (openForWrite | openForNotify)); }
};
static_assert(sizeof(void*) != 8 || sizeof(Record) == 40);

/// Records in chunks with stable addresses. A chunk is aligned to its size, so that a record finds its
/// drawing.
class QX_HOST_API RecordChain {
public:
    explicit RecordChain(Drawing& drawing) : drawing_{drawing} {}
    /// The chunks outlive the drawing, so that ids that somebody still holds stay safe to ask: those of the
    /// drawing that was closed last, and of the ones before it as far as they take little memory.
    ~RecordChain();
    RecordChain(const RecordChain&) = delete;
    RecordChain& operator=(const RecordChain&) = delete;

    Record* append();
    Record* first() const { return head_ ? head_->records : nullptr; }
    std::size_t size() const { return size_; }

    /// The next record in file order (new records come last); null after the last.
    static Record* next(const Record* record) {
        Chunk* chunk = chunkOf(record);
        const std::size_t index = static_cast<std::size_t>(record - chunk->records) + 1;
        if (index < chunk->used) return chunk->records + index;
        return chunk->next ? chunk->next->records : nullptr;
    }
    /// The one so many records further on; null behind the last.
    static Record* ahead(const Record* record, std::size_t count) {
        const Chunk* chunk = chunkOf(record);
        if (!chunk->drawing || count >= chunk->chain->size_) return nullptr;
        const auto index = static_cast<std::size_t>(record - chunk->records);
        const std::size_t place = chunk->number * Chunk::capacity + index + count;
        return place < chunk->chain->size_ ? chunk->chain->at(place) : nullptr;
    }
    /// Null when the drawing was closed.
    static Drawing* drawingOf(const Record* record) { return chunkOf(record)->drawing; }

private:
    // The header takes the place of a few records at the start of each aligned block of memory.
    struct Chunk {
        static constexpr std::size_t bytes = std::size_t{1} << 16;
        static constexpr std::size_t capacity = (bytes - 6 * sizeof(void*)) / sizeof(Record);

        Drawing* drawing = nullptr;
        const RecordChain* chain = nullptr; ///< good as long as there is a drawing
        std::size_t number = 0;             ///< of those before it, which are full
        Chunk* next = nullptr;
        std::size_t used = 0;
        Record records[capacity];
    };
    static Chunk* chunkOf(const Record* record) {
        return reinterpret_cast<Chunk*>(reinterpret_cast<std::uintptr_t>(record) & ~(Chunk::bytes - 1));
    }

    Record* at(std::size_t place) const {
        return chunks_[place / Chunk::capacity]->records + place % Chunk::capacity;
    }

    struct Closed;
    static void release(Chunk* chunk);

    Drawing& drawing_;
    Chunk* head_ = nullptr;
    Chunk* tail_ = nullptr;
    std::vector<Chunk*> chunks_;
    std::size_t size_ = 0;
};

} // namespace qx::db
