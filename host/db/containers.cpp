// Symbol tables, dictionaries and groups.
#include "db/Drawing.h"
#include "db/FieldTable.h"
#include "db/classes.h"
#include "dbdict.h"
#include "dbgroup.h"
#include "dbsymtb.h"
#include "dxf/Tag.h"
#include "os/encoding.h"

#include <algorithm>

using qx::db::Drawing;
using qx::db::FieldTable;
using qx::db::foldedName;
using qx::db::LayerState;
using qx::db::Record;
using qx::db::RecordChain;
using qx::db::Role;

ACRX_DEFINE_MEMBERS(AcDbSymbolTable, AcDbObject, nullptr)
ACRX_DEFINE_MEMBERS(AcDbBlockTable, AcDbSymbolTable, nullptr)
ACRX_DEFINE_MEMBERS(AcDbSymbolTableRecord, AcDbObject, nullptr)
ACRX_DEFINE_MEMBERS(AcDbBlockTableRecord, AcDbSymbolTableRecord, L"BLOCK_RECORD")
ACRX_DEFINE_MEMBERS(AcDbLayerTableRecord, AcDbSymbolTableRecord, L"LAYER")
ACRX_DEFINE_MEMBERS(AcDbDictionary, AcDbObject, L"DICTIONARY")
ACRX_DEFINE_MEMBERS(AcDbGroup, AcDbObject, L"GROUP")

namespace {

Drawing& drawingOf(const AcDbObject& object) { return *RecordChain::drawingOf(object.objectId().record()); }

std::string foldedKey(const ACHAR* name) {
    return foldedName(qx::os::toUtf8(std::wstring_view{name ? name : L""}));
}

} // namespace

// ---- tables

Acad::ErrorStatus AcDbDatabase::getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, AcDbObjectId{drawing_.blockTable()}, mode);
}

Acad::ErrorStatus AcDbDatabase::getGroupDictionary(AcDbDictionary*& dictionary, AcDb::OpenMode mode) {
    dictionary = nullptr;
    Record* record = drawing_.groupDictionary();
    return record ? acdbOpenObject(dictionary, AcDbObjectId{record}, mode) : Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbSymbolTable::getIdAt(const ACHAR* name, AcDbObjectId& id, bool) const {
    assertReadEnabled();
    Record* found = drawingOf(*this).findBlock(qx::os::toUtf8(std::wstring_view{name ? name : L""}));
    if (!found) return Acad::eKeyNotFound;
    id = AcDbObjectId{found};
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
    if (!entity) return Acad::eNullEntityPointer;
    if (!entity->objectId().isNull()) return Acad::eAlreadyInDb;
    if (!drawingOf(*this).canAppend(objectId().record(), *entity)) return Acad::eNotApplicable;
    assertWriteEnabled();
    id = AcDbObjectId{drawingOf(*this).append(objectId().record(), entity)};
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
    AcDbObjectId id;
    return appendAcDbEntity(id, entity);
}

namespace {
LayerState stateOf(const AcDbLayerTableRecord& layer) {
    const LayerState* state = drawingOf(layer).layers().of(layer.objectId().record());
    return state ? *state : LayerState{};
}
} // namespace

bool AcDbLayerTableRecord::isFrozen() const { return stateOf(*this).frozen; }
bool AcDbLayerTableRecord::isOff() const { return stateOf(*this).off; }
bool AcDbLayerTableRecord::isLocked() const { return stateOf(*this).locked; }

// ---- dictionaries

// Entries are pairs of a name (3) and a hard or soft owner's handle (350 or 360), then the new ones. Names of
// objects that are not there are left out; of two with the same name the first one counts.
bool AcDbDictionary::afterReading(const Drawing& drawing) {
    const std::string_view bytes = drawing.bytesOf(objectId().record());
    AcDbDictionaryEntries entries;
    qx::db::FieldTags tags{bytes};
    std::string_view name;
    for (qx::dxf::Tag tag; tags.next(tag);) {
        if (tag.code == 3) name = tag.value;
        if ((tag.code != 350 && tag.code != 360) || name.empty()) continue;
        const std::string utf8 = drawing.encoding().toUtf8(name);
        if (Record* record = drawing.find(qx::dxf::toHandle(tag.value).value_or(0)))
            entries.push_back({foldedName(utf8), qx::os::toWide(utf8), AcDbObjectId{record}});
        name = {};
    }
    for (const qx::db::NamedObject& each : drawing.newNamed())
        if (each.record->owner == objectId().record())
            entries.push_back({foldedName(each.name), qx::os::toWide(each.name), AcDbObjectId{each.record}});
    std::ranges::stable_sort(entries, {}, &AcDbDictionaryEntry::key);
    entries_ = std::make_shared<const AcDbDictionaryEntries>(std::move(entries));
    return true;
}

AcDbDictionaryIterator* AcDbDictionary::newIterator(AcRx::DictIterType) const {
    assertReadEnabled();
    return new AcDbDictionaryIterator{entries_};
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* name, AcDbObjectId& id) const {
    const auto key = foldedKey(name);
    auto entry = std::ranges::lower_bound(*entries_, key, {}, &AcDbDictionaryEntry::key);
    while (entry != entries_->end() && entry->key == key && entry->id.isErased()) ++entry;
    if (entry == entries_->end() || entry->key != key) return Acad::eKeyNotFound;
    id = entry->id;
    return Acad::eOk;
}

bool AcDbDictionary::has(const ACHAR* name) const {
    AcDbObjectId id;
    return getAt(name, id) == Acad::eOk;
}

Adesk::UInt32 AcDbDictionary::numEntries() const {
    return static_cast<Adesk::UInt32>(
        std::ranges::count_if(*entries_, [](const auto& entry) { return !entry.id.isErased(); }));
}

AcDbDictionaryIterator::AcDbDictionaryIterator(std::shared_ptr<const AcDbDictionaryEntries> entries)
    : entries_{std::move(entries)} {
    skipErased();
}

void AcDbDictionaryIterator::skipErased() {
    while (!done() && objectId().isErased()) ++index_;
}

bool AcDbDictionaryIterator::next() {
    ++index_;
    skipErased();
    return !done();
}

Acad::ErrorStatus AcDbDictionaryIterator::getObject(AcDbObject*& object, AcDb::OpenMode mode) const {
    return acdbOpenAcDbObject(object, objectId(), mode);
}

// ---- groups

qx::db::Fields AcDbGroup::fields() {
    static const FieldTable table{sizeof(Data), {{Role::integer, 71, offsetof(Data, selectable), 1}}};
    return {&table, &data_, nullptr};
}

bool AcDbGroup::afterReading(const Drawing& drawing) {
    qx::db::FieldTags tags{drawing.bytesOf(objectId().record())};
    for (qx::dxf::Tag tag; tags.next(tag);) {
        if (tag.code != 340) continue;
        Record* member = drawing.find(qx::dxf::toHandle(tag.value).value_or(0));
        if (member && qx::db::isMainEntity(member->kind)) members_.push_back(member);
    }
    return true;
}

Adesk::UInt32 AcDbGroup::allEntityIds(AcDbObjectIdArray& ids) const {
    assertReadEnabled();
    Adesk::UInt32 count = 0;
    for (Record* member : members_) {
        if (member->has(Record::erased)) continue;
        ids.append(AcDbObjectId{member});
        ++count;
    }
    return count;
}

bool AcDbGroup::has(const AcDbEntity* entity) const {
    return entity && !entity->isErased() &&
           std::ranges::find(members_, entity->objectId().record()) != members_.end();
}

Adesk::UInt32 AcDbGroup::numEntities() const {
    return static_cast<Adesk::UInt32>(
        std::ranges::count_if(members_, [](const Record* member) { return !member->has(Record::erased); }));
}
