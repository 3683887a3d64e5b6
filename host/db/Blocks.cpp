#include "db/Blocks.h"

#include "db/Drawing.h"
#include "db/Layers.h"
#include "dbdim.h"
#include "dbents.h"
#include "dxf/Tag.h"
#include "shape/ExtentsSink.h"

#include <algorithm>
#include <array>
#include <utility>

namespace qx::db {

namespace {

// Enough for any block a person draws, and for all references of a drawing together. A reference beyond that
// is drawn as a box, but never one that draws no more than a modest block.
constexpr std::size_t mostOfOne = 1'000'000, mostOfAll = 20'000'000, modest = 1000;
constexpr std::size_t deepestNesting = 64;

void drawBox(const shape::Box& box, shape::Sink& sink) {
    if (box.isEmpty()) return;
    const double z = box.min.z;
    const std::array corners{AcGePoint3d{box.min.x, box.min.y, z}, AcGePoint3d{box.max.x, box.min.y, z},
                             AcGePoint3d{box.max.x, box.max.y, z}, AcGePoint3d{box.min.x, box.max.y, z}};
    for (std::size_t i = 0; i < corners.size(); ++i)
        sink.segment({corners[i], corners[(i + 1) % corners.size()]});
    if (box.max.z > z) sink.segment({corners[0], box.max});
}

AcGePoint3d basePointIn(std::string_view bytes) {
    AcGePoint3d point;
    dxf::TagCursor cursor{bytes.data(), bytes.data() + bytes.size()};
    for (dxf::Tag tag; cursor.next(tag) && tag.code < 1000;) {
        const auto value =
            tag.code == 10 || tag.code == 20 || tag.code == 30 ? dxf::toReal(tag.value) : std::nullopt;
        if (value) (tag.code == 10 ? point.x : tag.code == 20 ? point.y : point.z) = *value;
    }
    return point;
}

} // namespace

std::string_view Blocks::nameIn(std::string_view bytes) {
    dxf::TagCursor cursor{bytes.data(), bytes.data() + bytes.size()};
    for (dxf::Tag tag; cursor.next(tag) && tag.code < 1000;)
        if (tag.code == 2) return tag.value;
    return {};
}

// Before there were block records, the layouts had another sign in front of their names.
std::string Blocks::decodedName(std::string_view bytes) const {
    std::string name = drawing_.encoding().toUtf8(bytes);
    if (drawing_.version().hasSubclasses() || !name.starts_with('$')) return name;
    const std::string folded = foldedName(name);
    if (folded.starts_with("$model_space") || folded.starts_with("$paper_space")) name[0] = '*';
    return name;
}

BlockDefinition& Blocks::addRecord(Record* record, std::string_view bytes) {
    BlockDefinition& definition = definitions_.emplace_back();
    definition.name = decodedName(bytes);
    definition.record = record;
    const std::string name = foldedName(definition.name);
    definition.isPaper = name.starts_with("*paper_space");
    definition.isLayout = definition.isPaper || name.starts_with("*model_space");
    definition.isCurrent = name == "*paper_space" || name == "*model_space";
    byRecord_[record] = &definition;
    definition.key = keyOf(bytes);
    byFoldedName_.try_emplace(definition.key, &definition);
    if (record->handle) byHandle_.try_emplace(record->handle, &definition);
    return definition;
}

BlockDefinition* Blocks::addBegin(Record* record, std::string_view bytes) {
    beingRead_ = named(nameIn(bytes));
    if (beingRead_ && beingRead_->begin) beingRead_ = nullptr;
    if (!beingRead_) return nullptr;
    beingRead_->begin = record;
    beingRead_->basePoint = basePointIn(bytes);
    return beingRead_;
}

void Blocks::addEnd(Record* record) {
    if (beingRead_) beingRead_->end = record;
    beingRead_ = nullptr;
}

BlockDefinition* Blocks::of(const Record* blockRecord) const {
    const auto found = byRecord_.find(blockRecord);
    return found == byRecord_.end() ? nullptr : found->second;
}

BlockDefinition* Blocks::withHandle(std::uint64_t handle) const {
    const auto found = byHandle_.find(handle);
    return found == byHandle_.end() ? nullptr : found->second;
}

// Model space has nearly all of the section, any other layout hardly anything: no walk for each of those.
const std::vector<Record*>& Blocks::onSheet(const BlockDefinition& layout) {
    if (!std::exchange(areSheetsListed_, true))
        drawing_.forEachInSection([&](Record* each) {
            if (!each->owner || each->owner == drawing_.modelSpace()) return;
            BlockDefinition* definition = of(each->owner);
            if (definition && definition->isLayout) definition->onSheet.push_back(each);
        });
    return layout.onSheet;
}

BlockDefinition* Blocks::namedUtf8(std::string_view name) const {
    const auto found = byFoldedName_.find(foldedName(name));
    return found == byFoldedName_.end() ? nullptr : found->second;
}

BlockDefinition* Blocks::named(std::string_view bytes) const {
    const auto found = byFoldedName_.find(keyOf(bytes));
    return found == byFoldedName_.end() ? nullptr : found->second;
}

BlockDefinition* Blocks::shownByDimension(std::string_view bytes) const {
    const std::string_view name = nameIn(bytes);
    BlockDefinition* definition = name.starts_with('*') ? named(name) : nullptr;
    return definition && definition->begin && !definition->isLayout ? definition : nullptr;
}

std::string Blocks::keyOf(std::string_view bytes) const { return nameKey(decodedName(bytes), bytes); }

std::size_t Blocks::usesOf(const BlockDefinition& definition) const {
    const auto found = uses_.find(definition.key);
    return found == uses_.end() ? 0 : found->second;
}

void Blocks::shape(BlockDefinition& definition, shape::Sink& sink) {
    if (definition.isBeingDrawn) {
        drawing_.addFinding(definition.begin, "block \"" + definition.name + "\" contains itself");
        return;
    }
    if (depth_ >= deepestNesting) {
        drawing_.addFinding(definition.begin,
                            "block \"" + definition.name + "\" is nested too deeply to be drawn");
        return;
    }
    if (depth_ == 0) drawn_ = 0;
    const std::size_t size = sizeOf(definition);
    if (isMeasuring_ || drawn_ + size > budgetFor(size)) return drawBox(boxOf(definition), sink);
    walk(definition, sink);
}

// Drawings whose references are all modest are not looked through for it.
std::size_t Blocks::budgetFor(std::size_t size) {
    if (depth_ == 0 && budget_ == 0 && size > modest) budget_ = budgetOfOne();
    return budget_ ? budget_ : mostOfOne;
}

// A few lines of text can ask for a thousand references to what is just within bounds.
std::size_t Blocks::budgetOfOne() {
    std::size_t references = 0, entities = 0;
    drawing_.forEachInModelSpace([&](Record* each) {
        if (!showsBlock(each->kind)) return;
        ++references;
        entities = std::min(entities + drawnBy(each), mostOfAll + 1);
    });
    return entities > mostOfAll ? std::max(modest, mostOfAll / references) : mostOfOne;
}

// How many entities a reference, or a dimension's picture, draws.
std::size_t Blocks::drawnBy(Record* reference) {
    const AcDbEntity* entity = drawing_.liveEntity(reference);
    if (!entity) return 0;
    const auto* dimension = AcDbDimension::cast(entity);
    BlockDefinition* shown =
        dimension ? dimension->blockMovedAlong()
                  : of(static_cast<const AcDbBlockReference*>(entity)->blockTableRecord().record());
    const auto* array = AcDbMInsertBlock::cast(entity);
    return shown ? std::min(sizeOf(*shown), mostOfOne + 1) * (array ? array->cellCount() : 1) : 0;
}

void Blocks::walk(BlockDefinition& definition, shape::Sink& sink) {
    definition.isBeingDrawn = true;
    ++depth_;
    drawing_.forEachInBlock(definition.record, [&](Record* each) {
        if (sink.isFull() || each->has(Record::erased)) return;
        ++drawn_;
        const AcDbEntity* entity = drawing_.liveEntity(each);
        if (entity && entity->isVisible()) entity->shapeInReference(sink);
    });
    --depth_;
    definition.isBeingDrawn = false;
}

bool Blocks::hasRoomFor(BlockDefinition* definition, std::size_t others, std::size_t copies) {
    const std::size_t each = (definition ? sizeOf(*definition) : 0) + others + 1;
    const std::size_t budget = budgetFor(std::min(each, mostOfOne) * copies);
    const std::size_t left = budget - std::min(budget, depth_ == 0 ? 0 : drawn_);
    const bool hasRoom = copies <= left / each;
    if (!hasRoom && !isMeasuring_ && definition)
        drawing_.addFinding(definition->begin,
                            "block \"" + definition->name +
                                "\" stands in too many rows and columns to be drawn in full");
    return hasRoom && !isMeasuring_;
}

// Stops counting beyond what would be drawn anyway. Counted once: later changes make no ordinary block a huge
// one.
std::size_t Blocks::sizeOf(BlockDefinition& definition) {
    if (definition.isBeingDrawn || depth_ >= deepestNesting) return 0;
    if (definition.isCounted) return definition.size;
    std::size_t size = 0;
    definition.isBeingDrawn = true;
    ++depth_;
    drawing_.forEachInBlock(definition.record, [&](Record* each) {
        const auto* entity = size <= mostOfOne ? drawing_.liveEntity(each) : nullptr;
        if (!entity) return;
        ++size;
        if (showsBlock(each->kind)) size += drawnBy(each);
    });
    --depth_;
    definition.isBeingDrawn = false;
    definition.isCounted = true;
    return definition.size = size;
}

// Reached only when a drawing is far beyond the ordinary. Each definition is measured once, from the boxes of
// those that it refers to.
const shape::Box& Blocks::boxOf(BlockDefinition& definition) {
    if (definition.boxVersion == version_) return definition.box;
    drawing_.addFinding(definition.begin,
                        "block \"" + definition.name + "\" is too large to be drawn in full");
    const bool wasMeasuring = std::exchange(isMeasuring_, true);
    shape::ExtentsSink extents;
    walk(definition, extents);
    isMeasuring_ = wasMeasuring;
    definition.boxVersion = version_;
    return definition.box = extents.box();
}

} // namespace qx::db
