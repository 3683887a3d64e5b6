// Dictionaries: named objects, walked in the order of their names.
#pragma once

#include "dbmain.h"
#include "rxdefs.h"

#include <string>
#include <vector>

/// Host side: a named object.
struct AcDbDictionaryEntry {
    std::string key; ///< the name in UTF-8, its ASCII letters in lower case
    std::wstring name;
    AcDbObjectId id;
};
using AcDbDictionaryEntries = std::vector<AcDbDictionaryEntry>;

/// Walks the entries in the order of their names; objects that are erased by then are passed over. The caller
/// deletes it.
class QX_HOST_API AcDbDictionaryIterator {
public:
    explicit AcDbDictionaryIterator(std::shared_ptr<const AcDbDictionaryEntries> entries);

    const ACHAR* name() const { return (*entries_)[index_].name.c_str(); }
    AcDbObjectId objectId() const { return (*entries_)[index_].id; }
    Acad::ErrorStatus getObject(AcDbObject*& object, AcDb::OpenMode mode = AcDb::kForRead) const;
    bool done() const { return index_ >= entries_->size(); }
    bool next();

private:
    void skipErased();

    std::shared_ptr<const AcDbDictionaryEntries> entries_;
    std::size_t index_ = 0;
};

/// Names compare without regard to the case of ASCII letters, and sort by that. Sorting is the only order
/// that an iterator offers here.
class QX_HOST_API AcDbDictionary : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDictionary)
    /// Called again whenever the dictionary gets a new object.
    bool afterReading(const qx::db::Drawing& drawing) override;

    AcDbDictionaryIterator* newIterator(AcRx::DictIterType type = AcRx::kDictSorted) const;
    /// eKeyNotFound when there is no such entry, or its object is erased.
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id) const;
    bool has(const ACHAR* name) const;
    Adesk::UInt32 numEntries() const;

    /// Host side: all entries, erased objects included.
    const AcDbDictionaryEntries& entries() const { return *entries_; }

private:
    std::shared_ptr<const AcDbDictionaryEntries> entries_ = std::make_shared<AcDbDictionaryEntries>();
};
