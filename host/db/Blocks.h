// Block definitions: what a block is made of, and what it looks like. A definition that contains itself is
// drawn without the inner copy, and a reference that would be drawn as too many primitives, by itself or with
// all others, as a box; both are noted as findings.
#pragma once

#include "db/HandleHash.h"
#include "db/Record.h"
#include "gepnt3d.h"
#include "shape/Sink.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qx::db {

struct BlockDefinition {
    std::string name;         ///< UTF-8
    std::string key;          ///< that of all names that mean it
    Record* record = nullptr; ///< in the table of block records
    Record* begin = nullptr;  ///< its BLOCK, null when the file has none
    Record* end = nullptr;    ///< its ENDBLK
    bool isLayout = false;    ///< model or paper space
    bool isCurrent = false;   ///< the layout that has its entities in a section of their own
    bool isPaper = false;
    Record* dimension = nullptr;  ///< the one with which the content has moved
    AcGePoint3d basePoint;        ///< what comes to a reference's insertion point
    std::vector<Record*> made;    ///< entities that were added in this session
    std::vector<Record*> onSheet; ///< of a layout, once Blocks::onSheet() was asked

    /// New entities go to the section of entities; otherwise before the ENDBLK, if there is one.
    bool isInSection() const { return isCurrent || (isLayout && !end); }

    // Kept while shapes are walked.
    bool isBeingDrawn = false;
    std::uint32_t boxVersion = 0; ///< of the definitions when the box was measured; 0: never
    shape::Box box;
    bool isCounted = false;
    std::size_t size =
        0; ///< when counted, how many entities it drew, those of the blocks it refers to included
};

class QX_HOST_API Blocks {
public:
    explicit Blocks(const Drawing& drawing) : drawing_{drawing} {}

    /// Takes in a record of the table of block records; a BLOCK that completes one (null when there is none,
    /// or it has its BLOCK already); the ENDBLK of the latter.
    BlockDefinition& addRecord(Record* record, std::string_view name);
    BlockDefinition* addBegin(Record* record, std::string_view bytes);
    void addEnd(Record* record);

    /// The name in the bytes of a BLOCK or of its record, as the file spells it.
    static std::string_view nameIn(std::string_view bytes);

    BlockDefinition* of(const Record* blockRecord) const;
    /// The first one whose record has the handle; null when there is none.
    BlockDefinition* withHandle(std::uint64_t handle) const;
    /// By name, as the file spells it or in UTF-8; null when there is none.
    BlockDefinition* named(std::string_view bytes) const;
    BlockDefinition* namedUtf8(std::string_view name) const;
    /// The block that a dimension with these bytes shows: anonymous, with content, and no layout; else null.
    BlockDefinition* shownByDimension(std::string_view bytes) const;
    /// A reference or a dimension shows that anonymous block.
    void noteUse(std::string_view name) { ++uses_[keyOf(name)]; }
    /// How many of them there are.
    std::size_t usesOf(const BlockDefinition& definition) const;
    std::deque<BlockDefinition>& all() { return definitions_; }
    /// What a layout other than model space has in the section of entities.
    const std::vector<Record*>& onSheet(const BlockDefinition& layout);

    /// What the definition looks like, in its own coordinates.
    void shape(BlockDefinition& definition, shape::Sink& sink);
    /// Whether that many copies of the definition, which may be null, and of so many other primitives can be
    /// drawn in full.
    bool hasRoomFor(BlockDefinition* definition, std::size_t others, std::size_t copies);
    /// An entity inside a definition changes: measured boxes of its references are out of date.
    void touch() { ++version_; }
    /// Changes with every touch(); never 0.
    std::uint32_t version() const { return version_; }

private:
    std::string keyOf(std::string_view bytes) const;
    std::string decodedName(std::string_view bytes) const;
    std::size_t sizeOf(BlockDefinition& definition);
    std::size_t budgetOfOne();
    std::size_t budgetFor(std::size_t size);
    std::size_t drawnBy(Record* reference);
    const shape::Box& boxOf(BlockDefinition& definition);
    void walk(BlockDefinition& definition, shape::Sink& sink);

    const Drawing& drawing_;
    std::deque<BlockDefinition> definitions_;
    std::unordered_map<const Record*, BlockDefinition*> byRecord_;
    std::unordered_map<std::string, BlockDefinition*> byFoldedName_;
    std::unordered_map<std::string, std::size_t> uses_; ///< of anonymous blocks, by folded name
    std::unordered_map<std::uint64_t, BlockDefinition*, HandleHash> byHandle_;
    bool areSheetsListed_ = false;
    BlockDefinition* beingRead_ = nullptr;
    std::uint32_t version_ = 1;
    std::size_t depth_ = 0;
    std::size_t drawn_ = 0;  ///< entities handed over in the running walk
    std::size_t budget_ = 0; ///< how many entities one reference may draw; 0 until a large one is drawn
    bool isMeasuring_ = false;
};

} // namespace qx::db
