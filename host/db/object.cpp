#include "db/Drawing.h"
#include "db/FieldTable.h"
#include "db/Violation.h"
#include "dbapserv.h"
#include "dxf/Tag.h"
#include "os/encoding.h"

#include <algorithm>
#include <cstdio>

using qx::db::Drawing;
using qx::db::Record;
using qx::db::RecordChain;
using qx::db::Violation;

ACRX_DEFINE_MEMBERS(AcDbObject, AcRxObject, nullptr)

qx::db::Violation::~Violation() = default;

namespace {

std::string described(const Record& record, const AcDbObject& object) {
    const std::wstring_view className = object.isA()->name();
    return qx::os::toUtf8(className) + " " + qx::dxf::handleText(record.handle);
}

} // namespace

// ---- ids

bool AcDbObjectId::isValid() const { return record_ && RecordChain::drawingOf(record_); }
bool AcDbObjectId::isErased() const { return !isValid() || record_->has(Record::erased); }
AcDbHandle AcDbObjectId::handle() const { return AcDbHandle{record_ ? record_->handle : 0}; }
AcDbDatabase* AcDbObjectId::database() const {
    Drawing* drawing = record_ ? RecordChain::drawingOf(record_) : nullptr;
    return drawing ? &drawing->database() : nullptr;
}

// ---- objects

// A destructor can't refuse. The record forgets the object, so that the drawing falls back on the file, and
// whoever runs the command hears of it through the drawing's count of such deletions.
AcDbObject::~AcDbObject() {
    if (!record_ || record_->live != this) return;
    record_->live = nullptr;
    if (Drawing* drawing = RecordChain::drawingOf(record_)) drawing->noteDeletion(record_);
}

void AcDbObject::setTail(std::unique_ptr<qx::db::GroupList>) {}

AcDbObjectId AcDbObject::ownerId() const { return AcDbObjectId{record_ ? record_->owner : nullptr}; }

void AcDbObject::getAcDbHandle(AcDbHandle& handle) const { handle = objectId().handle(); }

AcDbDatabase* AcDbObject::database() const { return objectId().database(); }

Acad::ErrorStatus AcDbObject::close() {
    return record_ ? RecordChain::drawingOf(record_)->close(record_) : Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbObject::erase(bool erasing) {
    if (!record_) return Acad::eNotApplicable;
    if (!isWriteEnabled())
        throw Violation{described(*record_, *this) + " is erased without being open for writing"};
    return RecordChain::drawingOf(record_)->erase(record_, erasing);
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
    return record_ ? RecordChain::drawingOf(record_)->upgrade(record_) : Acad::eWasOpenForWrite;
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
    if (!record_) return Acad::eNotApplicable;
    if (record_->has(Record::openForNotify)) return Acad::eWasOpenForNotify;
    if (record_->readers) return Acad::eWasOpenForRead;
    if (!record_->has(Record::openForWrite)) return Acad::eNotOpenForWrite;
    record_->set(Record::openForWrite, false);
    record_->readers = 1;
    return Acad::eOk;
}

bool AcDbObject::isErased() const { return record_ && record_->has(Record::erased); }
bool AcDbObject::isReadEnabled() const { return !record_ || record_->isOpen(); }
bool AcDbObject::isWriteEnabled() const { return !record_ || record_->has(Record::openForWrite); }

void AcDbObject::assertReadEnabled() const {
    if (!isReadEnabled()) throw Violation{described(*record_, *this) + " is read without being open"};
}

void AcDbObject::assertWriteEnabled() {
    if (!record_) return;
    if (!isWriteEnabled())
        throw Violation{described(*record_, *this) + " is changed without being open for writing"};
    RecordChain::drawingOf(record_)->aboutToChange(record_);
}

// ---- opening

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
    object = nullptr;
    if (id.isNull()) return Acad::eNullObjectId;
    Drawing* drawing = RecordChain::drawingOf(id.record());
    return drawing ? drawing->open(id.record(), mode, openErased, object) : Acad::ePermanentlyErased;
}

Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& entity, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
    return acdbOpenObject(entity, id, mode, openErased);
}

AcDbHostApplicationServices* acdbHostApplicationServices() {
    static AcDbHostApplicationServices services;
    return &services;
}

// ---- extents

Acad::ErrorStatus AcDbExtents::set(const AcGePoint3d& min, const AcGePoint3d& max) {
    if (min.x > max.x || min.y > max.y || min.z > max.z) return Acad::eInvalidInput;
    min_ = min;
    max_ = max;
    return Acad::eOk;
}

void AcDbExtents::addPoint(const AcGePoint3d& p) {
    min_ = {std::min(min_.x, p.x), std::min(min_.y, p.y), std::min(min_.z, p.z)};
    max_ = {std::max(max_.x, p.x), std::max(max_.y, p.y), std::max(max_.z, p.z)};
}

void AcDbExtents::addExt(const AcDbExtents& other) {
    if (other.min_.x > other.max_.x) return;
    addPoint(other.min_);
    addPoint(other.max_);
}
