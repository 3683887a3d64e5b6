// What all geometry shares: the default tolerance of the process and the error conditions that operations
// report.
#pragma once

#include "getol.h"
#include "qxexport.h"

struct QX_HOST_API AcGeContext {
    /// Used wherever a call names no tolerance. Copy it to widen one comparison; changing it changes all.
    static AcGeTol gTol;
};

namespace AcGe {
enum ErrorCondition {
    kOk,
    k0This ///< the object itself is of zero length
};
} // namespace AcGe
