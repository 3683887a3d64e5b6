// The rules of opening and closing.
#include "db/Drawing.h"

namespace qx::db {

// Vertices count as on the layer of their polyline, whatever the file says.
bool Drawing::isOnLockedLayer(Record* record) const {
    const bool isVertex = record->kind == Kind::vertex && record->owner;
    const AcDbEntity* entity = liveEntity(isVertex ? record->owner : record);
    return entity && entity->layerState().locked;
}

Acad::ErrorStatus Drawing::refusal(const Record* record, AcDb::OpenMode mode, bool openErased) const {
    constexpr std::uint8_t unusual = Record::erased | Record::openForNotify | Record::openForWrite;
    if (record->flags & unusual) { // one test for what is nearly always so
        if (record->has(Record::erased) && !openErased) return Acad::eWasErased;
        if (record->has(Record::openForNotify)) return Acad::eWasOpenForNotify;
        if (record->has(Record::openForWrite)) return Acad::eWasOpenForWrite;
    }
    if (mode == AcDb::kForRead) return record->readers < Record::maxReaders ? Acad::eOk : Acad::eAtMaxReaders;
    if (record->readers) return Acad::eWasOpenForRead;
    return mode == AcDb::kForWrite && !locked_ ? Acad::eLockViolation : Acad::eOk;
}

Acad::ErrorStatus Drawing::open(Record* record, AcDb::OpenMode mode, bool openErased, AcDbObject*& object) {
    return noted(record, tryOpen(record, mode, openErased, object));
}

Acad::ErrorStatus Drawing::upgrade(Record* record) { return noted(record, tryUpgrade(record)); }

Acad::ErrorStatus Drawing::tryOpen(Record* record, AcDb::OpenMode mode, bool openErased,
                                   AcDbObject*& object) {
    if (const Acad::ErrorStatus status = refusal(record, mode, openErased); status != Acad::eOk)
        return status;
    AcDbObject* found = live(record);
    if (!found) return record->begin ? Acad::eNotApplicable : Acad::ePermanentlyErased;
    if (mode == AcDb::kForWrite && isOnLockedLayer(record)) return Acad::eOnLockedLayer;
    const Action action = mode == AcDb::kForWrite ? Action::openForWrite : Action::openForRead;
    if (const Acad::ErrorStatus status = faultAt(action, record); status != Acad::eOk) return status;
    if (mode == AcDb::kForWrite && writeListener_) writeListener_();

    if (mode == AcDb::kForRead)
        ++record->readers;
    else
        record->set(mode == AcDb::kForWrite ? Record::openForWrite : Record::openForNotify);
    ++openCount_;
    object = found;
    return Acad::eOk;
}

Acad::ErrorStatus Drawing::close(Record* record) {
    if (!record->isOpen()) return Acad::eNotOpenForRead;
    if (record->readers)
        --record->readers;
    else {
        record->set(Record::openForWrite, false);
        record->set(Record::openForNotify, false);
    }
    --openCount_;
    return Acad::eOk;
}

Acad::ErrorStatus Drawing::tryUpgrade(Record* record) {
    if (record->has(Record::openForWrite)) return Acad::eWasOpenForWrite;
    if (record->has(Record::openForNotify)) return Acad::eWasOpenForNotify;
    if (record->readers == 0) return Acad::eNotOpenForRead;
    if (record->readers > 1) return Acad::eHadMultipleReaders;
    if (!locked_) return Acad::eLockViolation;
    if (isOnLockedLayer(record)) return Acad::eOnLockedLayer;
    if (const Acad::ErrorStatus status = faultAt(Action::openForWrite, record); status != Acad::eOk)
        return status;
    if (writeListener_) writeListener_();
    record->readers = 0;
    record->set(Record::openForWrite);
    return Acad::eOk;
}

Acad::ErrorStatus Drawing::erase(Record* record, bool erasing) {
    if (erasing && record->has(Record::erased)) return Acad::eWasErased;
    const auto change = [&](Record* each) {
        if (each->has(Record::erased) == erasing) return;
        aboutToChange(each);
        each->set(Record::erased, erasing);
    };
    change(record);
    if (hasParts(record)) forEachOwned(record, change);
    return Acad::eOk;
}

std::size_t Drawing::closeAll() {
    const std::size_t left = openCount_;
    for (Record* each = records_.first(); each && openCount_; each = RecordChain::next(each))
        while (each->isOpen()) close(each);
    return left;
}

} // namespace qx::db
