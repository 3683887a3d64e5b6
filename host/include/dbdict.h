// Dictionaries: named objects, walked in the order of their names.
#pragma once

#include "dbmain.h"
#include "rxdefs.h"

#include <string>
#include <vector>

/// Host side: a named object.
struct AcDbDictionaryEntry {
    std::wstring name;
    AcDbObjectId id;
};

/// Walks the entries that a dictionary had when the iterator was made. The caller deletes it.
class QX_HOST_API AcDbDictionaryIterator {
public:
    explicit AcDbDictionaryIterator(std::vector<AcDbDictionaryEntry> entries) : entries_{std::move(entries)} {}

    const ACHAR* name() const;
    AcDbObjectId objectId() const;
    Acad::ErrorStatus getObject(AcDbObject*& object, AcDb::OpenMode mode = AcDb::kForRead) const;
    bool done() const { return index_ >= entries_.size(); }
    bool next() {
        ++index_;
        return !done();
    }

private:
    std::vector<AcDbDictionaryEntry> entries_;
    std::size_t index_ = 0;
};

class QX_HOST_API AcDbDictionary : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDictionary)
    bool afterReading(const qx::db::Drawing& drawing) override;

    /// Sorted by name without regard to case; erased objects are left out. kDictCollated gives the file's order.
    AcDbDictionaryIterator* newIterator(AcRx::DictIterType type = AcRx::kDictSorted) const;
    /// eKeyNotFound when there is no such entry.
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id) const;
    bool has(const ACHAR* name) const;
    Adesk::UInt32 numEntries() const;

    /// Host side: the entries without their erased objects.
    std::vector<AcDbDictionaryEntry> entries(AcRx::DictIterType type) const;

private:
    std::vector<AcDbDictionaryEntry> entries_;
};
