// Enumerations of the drawing database.
#pragma once

#include "acadstrc.h"
#include "adesk.h"

namespace AcDb {
/// What an object is opened for. kForNotify shuts out every other opening until it is closed.
enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };
/// Which operand of an intersection is extended; two bits.
enum Intersect { kOnBothOperands = 0, kExtendThis = 1, kExtendArg = 2, kExtendBoth = 3 };
} // namespace AcDb
