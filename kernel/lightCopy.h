// A 2D polyline looked at as a lightweight one.
#pragma once

#include "dbents.h"
#include "dbpl.h"

#include <memory>

namespace qx::kernel {

/// A copy in memory, which is in no drawing; null for a curve-fit or spline-fit polyline. The polyline must
/// be open and stays as it is.
std::unique_ptr<AcDbPolyline> lightCopy(AcDb2dPolyline& polyline);

} // namespace qx::kernel
