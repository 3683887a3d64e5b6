#include "kernel/construction.h"

#include "dbapserv.h"
#include "dbents.h"
#include "kernel/Opened.h"

namespace qx::kernel {
namespace {
const AcGeVector3d upwards{0, 0, 1};

/// Null when there is no drawing, or it can't be opened.
Opened<AcDbBlockTableRecord> openModelSpace() {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    AcDbBlockTable* blocks = nullptr;
    if (!database || database->getSymbolTable(blocks, AcDb::kForRead) != Acad::eOk) return nullptr;
    const Opened<AcDbBlockTable> table{blocks};
    AcDbBlockTableRecord* record = nullptr;
    openBlockRecord(blocks, ACDB_MODEL_SPACE, record, AcDb::kForWrite);
    return Opened<AcDbBlockTableRecord>{record};
}
} // namespace

AcDbObjectId appendToModelSpace(std::unique_ptr<AcDbEntity> entity) {
    const Opened<AcDbBlockTableRecord> modelSpace = openModelSpace();
    AcDbObjectId id;
    if (!modelSpace || modelSpace->appendAcDbEntity(id, entity.get()) != Acad::eOk)
        return AcDbObjectId::kNull;
    entity.release()->close();
    return id;
}

Acad::ErrorStatus openBlockRecord(AcDbSymbolTable* table, const ACHAR* name, AcDbBlockTableRecord*& record,
                                  AcDb::OpenMode mode, bool openErased) {
    record = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus status = table->getIdAt(name, id, openErased);
    return status == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : status;
}

AcDbObjectId makeLine(const AcGePoint3d& start, const AcGePoint3d& end, Adesk::UInt16 colourIndex) {
    auto line = std::make_unique<AcDbLine>(start, end);
    if (colourIndex != 0) line->setColorIndex(colourIndex, true);
    return appendToModelSpace(std::move(line));
}

AcDbObjectId makeCircle(const AcGePoint3d& centre, double radius) {
    return appendToModelSpace(std::make_unique<AcDbCircle>(centre, upwards, radius));
}

AcDbObjectId makeArc(const AcGePoint3d& centre, double radius, double startAngle, double endAngle) {
    return appendToModelSpace(std::make_unique<AcDbArc>(centre, upwards, radius, startAngle, endAngle));
}

} // namespace qx::kernel
