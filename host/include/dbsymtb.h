// Symbol tables and their records: the blocks and the layers of a drawing.
#pragma once

#include "dbmain.h"

#include <string>
#include <string_view>
#include <vector>

#define ACDB_MODEL_SPACE L"*Model_Space"
#define ACDB_PAPER_SPACE L"*Paper_Space"

class QX_HOST_API AcDbSymbolTable : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTable)
    /// Names compare without regard to case; eKeyNotFound when there is none. Records are never erased here,
    /// so `getErasedRecord` makes no difference.
    Acad::ErrorStatus getIdAt(const ACHAR* name, AcDbObjectId& id, bool getErasedRecord = false) const;
};

class QX_HOST_API AcDbBlockTable : public AcDbSymbolTable {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockTable)
};

class QX_HOST_API AcDbSymbolTableRecord : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord)
};

class QX_HOST_API AcDbBlockTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockTableRecord)
    /// The drawing takes the entity over: afterwards it is closed, never deleted. Needs the record open for
    /// writing; eAlreadyInDb for an entity that a drawing holds; eNullEntityPointer;
    /// eNotApplicable for a block that the file only names, and for a class that the drawing's version lacks.
    Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);
    Acad::ErrorStatus appendAcDbEntity(AcDbEntity* entity);
};

class QX_HOST_API AcDbLayerTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayerTableRecord)
    bool isFrozen() const;
    bool isOff() const;
    bool isLocked() const;
};
