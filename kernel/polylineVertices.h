// The vertices of the three kinds of polyline, as one list.
#pragma once

#include "dbmain.h"
#include "gept3dar.h"

namespace qx::kernel {

/// World coordinates, in the polyline's order, without the control points of a fitted one; none for any other
/// entity. The polyline must be open. The status of the first vertex that can't be opened, where `vertices`
/// ends.
Acad::ErrorStatus readPolylineVertices(AcDbEntity& entity, AcGePoint3dArray& vertices);

/// True for the three kinds of polyline.
bool isPolyline(AcDbEntity& entity);

} // namespace qx::kernel
