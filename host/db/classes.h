// Which classes a drawing's objects have: from the name in the file to the kind of record and to the live
// object.
#pragma once

#include "db/Record.h"

#include <memory>
#include <string_view>

class AcDbObject;

namespace qx::db {

/// The kind of a record by the name in its group 0. Names that are unknown are entities or objects by where
/// they stand.
Kind kindOf(std::string_view name, bool amongEntities);

/// An object of the class that belongs to the kind, without data. Polylines, insertions and tables need
/// their bytes to tell which of several classes they are, vertices those of their polyline. A table without
/// bytes stands in for the one of block records.
std::unique_ptr<AcDbObject> newObject(Kind kind, std::string_view bytes, std::string_view headerBytes = {});

} // namespace qx::db
