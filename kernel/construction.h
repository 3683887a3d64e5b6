// New entities in the model space of the working database, whatever space is current. They are left with the
// database's default properties and closed. A null id means that the entity could not be added.
#pragma once

#include "dbmain.h"
#include "dbsymtb.h"

#include <memory>

namespace qx::kernel {

/// Hands the entity to the database; one that could not be added is deleted.
AcDbObjectId appendToModelSpace(std::unique_ptr<AcDbEntity> entity);

/// Opens a record of an open table by its name. `record` is null unless the status is eOk; the caller closes
/// it.
Acad::ErrorStatus openBlockRecord(AcDbSymbolTable* table, const ACHAR* name, AcDbBlockTableRecord*& record,
                                  AcDb::OpenMode mode, bool openErased = false);

/// Colour index 0 leaves the default colour.
AcDbObjectId makeLine(const AcGePoint3d& start, const AcGePoint3d& end, Adesk::UInt16 colourIndex);

/// Parallel to the XY plane.
AcDbObjectId makeCircle(const AcGePoint3d& centre, double radius);

/// Parallel to the XY plane, counter-clockwise from the start to the end angle, in radians.
AcDbObjectId makeArc(const AcGePoint3d& centre, double radius, double startAngle, double endAngle);

} // namespace qx::kernel
