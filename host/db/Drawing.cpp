#include "db/Drawing.h"

#include "db/FieldTable.h"
#include "db/classes.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "dxf/Tag.h"
#include "os/encoding.h"
#include "shape/ExtentsSink.h"
#include "shape/TransformSink.h"

#include <algorithm>
#include <array>
#include <limits>

namespace qx::db {

namespace {

constexpr std::size_t mostFindings = 1000; // of one drawing; more help nobody

Kind kindOfNew(const AcDbEntity& entity) {
    return kindOf(os::toUtf8(std::wstring_view{entity.isA()->dxfName()}), true);
}

} // namespace

Drawing::Drawing(os::Bytes bytes, std::string name) : path_{std::move(name)}, bytes_{std::move(bytes)} {}

// Live objects know their record; without it they may be deleted.
Drawing::~Drawing() {
    for (Record* each = records_.first(); each; each = RecordChain::next(each)) {
        if (!each->live) continue;
        each->live->setRecord(nullptr);
        delete std::exchange(each->live, nullptr);
    }
}

void Drawing::addFindingAt(const char* where, std::string sentence) const {
    if (findings_.size() >= mostFindings || !noted_.emplace(where, sentence).second) return;
    findings_.push_back({lineOf(where), os::withoutControls(sentence)});
}

// Counted once for all findings, as there may be many in a large file.
std::size_t Drawing::lineOf(const char* where) const {
    constexpr std::size_t stretch = std::size_t{1} << 16;
    if (!where) return 0;
    const auto linesIn = [](const char* begin, const char* end) {
        return static_cast<std::size_t>(std::count(begin, end, '\n'));
    };
    const char* begin = bytes_.data();
    const std::size_t index = static_cast<std::size_t>(where - begin) / stretch;
    if (linesBefore_.empty()) linesBefore_.push_back(0);
    for (std::size_t known = linesBefore_.size(); known <= index; ++known) {
        const char* end = begin + known * stretch;
        linesBefore_.push_back(linesBefore_.back() + linesIn(end - stretch, end));
    }
    return 1 + linesBefore_[index] + linesIn(begin + index * stretch, where);
}

std::string_view Drawing::bytesOf(const Record* record) const {
    if (!record->begin) return ""; // a cursor can walk it
    const Record* next = RecordChain::next(record);
    const char* end = next && next->begin ? next->begin : bytes_.data() + bytes_.size();
    return {record->begin, static_cast<std::size_t>(end - record->begin)};
}

// ---- finding objects

Record* Drawing::find(std::uint64_t handle) const {
    if (handle == 0) return nullptr;
    if (!index_.isBuilt()) index_.build(records_);
    return index_.find(handle);
}

Record* Drawing::findBlock(std::string_view name) const {
    const BlockDefinition* definition = blocks_->namedUtf8(name);
    return definition ? definition->record : nullptr;
}

namespace {

TextStyle textStyleIn(std::string_view bytes, std::string_view& name) {
    TextStyle style;
    FieldTags tags{bytes};
    for (dxf::Tag tag; tags.next(tag);) {
        if (tag.code == 2) name = tag.value;
        if (tag.code == 41) style.widthFactor = dxf::toReal(tag.value).value_or(1);
        if (tag.code == 50) style.obliqueDegrees = dxf::toReal(tag.value).value_or(0);
    }
    return style;
}

} // namespace

// The table of styles stands before all that has text.
TextStyle Drawing::textStyle(std::string_view name) const {
    if (!textStyles_) {
        textStyles_.emplace();
        for (const Record* each = records_.first(); each && each != entities_;
             each = RecordChain::next(each)) {
            dxf::TagCursor cursor{bytesOf(each).data(), bytesOf(each).data() + bytesOf(each).size()};
            dxf::Tag tag;
            if (each->kind != Kind::otherObject || !cursor.next(tag) || dxf::trimmed(tag.value) != "STYLE")
                continue;
            std::string_view styleName;
            const TextStyle style = textStyleIn(bytesOf(each), styleName);
            textStyles_->try_emplace(foldedName(encoding_->toUtf8(styleName)), style);
        }
    }
    const auto found = textStyles_->find(foldedName(encoding_->toUtf8(name.empty() ? "STANDARD" : name)));
    return found == textStyles_->end() ? TextStyle{} : found->second;
}

std::string_view Drawing::headerValue(std::string_view name, int code) const {
    if (!header_) return {};
    const std::string_view bytes = bytesOf(header_);
    dxf::TagCursor cursor{bytes.data(), bytes.data() + bytes.size()};
    bool isInside = false;
    for (dxf::Tag tag; cursor.next(tag);) {
        if (tag.code == 9)
            isInside = dxf::trimmed(tag.value) == name;
        else if (isInside && tag.code == code)
            return dxf::trimmed(tag.value);
    }
    return {};
}

UserCoordinateSystem Drawing::ucs() const {
    if (ucs_) return *ucs_;
    const auto number = [&](std::string_view name, int code, double fallback) {
        return dxf::toReal(headerValue(name, code)).value_or(fallback);
    };
    UserCoordinateSystem ucs;
    ucs.origin = {number("$UCSORG", 10, 0), number("$UCSORG", 20, 0), number("$UCSORG", 30, 0)};
    ucs.xAxis = {number("$UCSXDIR", 10, 1), number("$UCSXDIR", 20, 0), number("$UCSXDIR", 30, 0)};
    ucs.yAxis = {number("$UCSYDIR", 10, 0), number("$UCSYDIR", 20, 1), number("$UCSYDIR", 30, 0)};
    ucs_ = ucs;
    return ucs;
}

// ---- objects

namespace {

/// Why the object can't be used, empty for one that can.
std::string faultIn(const ReadFields& read, std::string_view bytes) {
    if (read.isGroupOpen) return "a group of an application (102 {) has no end";
    if (!read.fault) return {};
    const auto line = static_cast<std::size_t>(std::count(bytes.data(), read.fault, '\n'));
    return "the value " + std::to_string(line) + " lines further on is no number";
}

} // namespace

std::unique_ptr<AcDbObject> Drawing::decoded(Record* record) const {
    const std::string_view bytes = bytesOf(record);
    const bool isVertex = record->kind == Kind::vertex && record->owner;
    const Record* header = isVertex && record->owner->kind == Kind::polyline ? record->owner : nullptr;
    std::unique_ptr<AcDbObject> object =
        newObject(record->kind, bytes, header ? bytesOf(header) : std::string_view{});
    if (const Fields fields = object->fields(); fields.table) {
        const ReadFields read = readFields(bytes, *fields.table, fields.base);
        if (const std::string fault = faultIn(read, bytes); !fault.empty()) {
            addUnusable(record, fault);
            return nullptr;
        }
        object->setLayerState(layers_->named(read.layer));
        if (!read.tail.empty()) object->setTail(readTail(read.tail, *fields.table->tail));
    }
    object->setRecord(record);
    if (object->afterReading(*this)) return object;
    object->setRecord(nullptr);
    return nullptr;
}

AcDbObject* Drawing::read(Record* record) const {
    if (!record->begin) return nullptr;
    std::unique_ptr<AcDbObject> object = decoded(record);
    if (!object) record->set(Record::unusable);
    return record->live = object.release();
}

std::unique_ptr<AcDbObject> Drawing::asInFile(Record* record) const {
    return record->begin && !record->has(Record::unusable) ? decoded(record) : nullptr;
}

bool Drawing::isSelectable(Record* record) const {
    if (record->has(Record::erased) || record->owner != modelSpace_ || !isMainEntity(record->kind))
        return false;
    const AcDbEntity* entity = liveEntity(record);
    return entity && entity->isMeasurable() && entity->isVisible();
}

shape::Box Drawing::extentsAtOpening() const {
    shape::ExtentsSink sink;
    forEachInModelSpace([&](Record* each) { addAsAtOpening(each, sink); });
    return sink.box();
}

void Drawing::addAsAtOpening(Record* record, shape::Sink& sink) const {
    if (!record->begin || record->has(Record::unusable)) return;
    bool isChanged = record->has(Record::changed);
    if (record->kind == Kind::polyline)
        forEachOwned(record, [&](const Record* part) { isChanged |= part->has(Record::changed); });
    const std::unique_ptr<AcDbObject> original = isChanged ? decoded(record) : nullptr;
    const auto* entity = original ? static_cast<const AcDbEntity*>(original.get()) : liveEntity(record);
    if (!entity || !entity->isMeasurable() || !entity->isVisible()) return;
    if (const BlockDefinition* block = entity->blockMovedAlong())
        return forEachInBlock(block->record, [&](Record* each) {
            if (each->kind != Kind::dimension) addAsAtOpening(each, sink);
        });
    if (record->kind != Kind::insert) return entity->extremes(sink);
    const auto addCell = [&](shape::Sink& cell) {
        static_cast<const AcDbBlockReference*>(entity)->blockShape(cell);
        forEachOwned(record, [&](Record* attribute) { addAsAtOpening(attribute, cell); });
    };
    const auto* array = AcDbMInsertBlock::cast(entity);
    if (!array) return addCell(sink);
    array->forEachCornerCell([&](const AcGeVector3d& offset) {
        shape::TransformSink moved{sink, AcGeMatrix3d::translation(offset)};
        addCell(moved);
    });
}

bool Drawing::canAppend(const Record* blockRecord, const AcDbEntity& entity) const {
    const BlockDefinition* definition = blocks_->of(blockRecord);
    const Kind kind = kindOfNew(entity);
    const bool isKnown = kind == Kind::lwPolyline
                             ? version_.hasLightweightPolylines()
                             : version_.hasSubclasses() || (kind != Kind::ellipse && kind != Kind::mtext);
    return isKnown && definition && (definition->isInSection() || definition->end);
}

// The largest one of all is left, since $HANDSEED is to name the one behind.
std::uint64_t Drawing::takeHandle() {
    constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    if (nextHandle_ == 0) {
        nextHandle_ = std::max<std::uint64_t>(dxf::toHandle(headerValue("$HANDSEED", 5)).value_or(1), 1);
        for (const Record* each = records_.first(); each; each = RecordChain::next(each))
            nextHandle_ = std::max(nextHandle_, std::min(each->handle, largest - 1) + 1);
    }
    if (nextHandle_ == largest) {
        takesGaps_ = true;
        nextHandle_ = 1;
    }
    while (takesGaps_ && find(nextHandle_)) ++nextHandle_;
    return nextHandle_++;
}

Record* Drawing::addNew(Kind kind, AcDbObject* object, Record* owner) {
    const std::uint64_t handle = takeHandle();
    Record* record = records_.append();
    record->handle = handle;
    record->live = object;
    record->owner = owner;
    record->kind = kind;
    record->set(Record::isNew);
    object->setRecord(record);
    history_.logNew(record);
    if (index_.isBuilt()) index_.add(record);
    return record;
}

Record* Drawing::append(Record* blockRecord, AcDbEntity* entity) {
    Record* record = addNew(kindOfNew(*entity), entity, blockRecord);
    record->set(Record::openForWrite);
    ++openCount_;
    entity->setLayerState(currentLayer());
    blocks_->of(blockRecord)->made.push_back(record);
    if (blockRecord != modelSpace_) noteChangeOfPart(record);
    return record;
}

// Whoever shows the part has to be measured anew: the entity that owns it, and all references to its block.
void Drawing::noteChangeOfPart(const Record* record) {
    Record* owner = record->owner;
    if (owner && isEntity(owner->kind)) {
        forgetBox(*owner);
        noteChangeOfPart(owner);
    } else if (const BlockDefinition* definition = owner ? blocks_->of(owner) : nullptr;
               definition && !definition->isLayout) {
        blocks_->touch();
    }
}

const Record* Drawing::endOf(const Record* section) {
    const Record* each = section;
    while (each && each->kind != Kind::endSection) each = RecordChain::next(each);
    return each;
}

const LayerState& Drawing::currentLayer() const {
    if (!currentLayer_) {
        const std::string_view name = headerValue("$CLAYER", 8);
        currentLayer_ = &layers_->named(name.empty() ? "0" : name);
    }
    return *currentLayer_;
}

} // namespace qx::db
