// Dictionaries: named objects, walked in the order of their names.
#pragma once

#include "dbmain.h"
#include "rxdefs.h"

#include <string>
#include <vector>

class AcDbDictionary;

/// Walks the entries that a dictionary had when the iterator was made. The caller deletes it.
class QX_HOST_API AcDbDictionaryIterator {
public:
    const ACHAR* name() const;
    AcDbObjectId objectId() const;
    Acad::ErrorStatus getObject(AcDbObject*& object, AcDb::OpenMode mode = AcDb::kForRead) const;
    bool done() const { return index_ >= entries_.size(); }
    bool next() {
        ++index_;
        return !done();
    }

private:
    friend class AcDbDictionary;
    struct Entry {
        std::wstring name;
        AcDbObjectId id;
    };
    std::vector<Entry> entries_;
    std::size_t index_ = 0;
};

class QX_HOST_API AcDbDictionary : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDictionary)
    std::unique_ptr<AcDbObject> copied() const override;
    bool afterReading(const qx::db::Drawing& drawing) override;

    /// Sorted by name without regard to case; erased objects are left out. kDictCollated gives the file's order.
    AcDbDictionaryIterator* newIterator(AcRx::DictIterType type = AcRx::kDictSorted) const;
    /// eKeyNotFound when there is no such entry.
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id) const;
    bool has(const ACHAR* name) const;
    Adesk::UInt32 numEntries() const;

private:
    std::vector<AcDbDictionaryIterator::Entry> entries_;
};
