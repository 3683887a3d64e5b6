// The midpoint of two points as the alignments use it: in the XY plane.
#pragma once

#include "gepnt3d.h"

namespace qx::kernel {

/// Its z is 0, whatever z the points have.
inline AcGePoint3d midpointXY(const AcGePoint3d& a, const AcGePoint3d& b) {
    return {(a.x + b.x) / 2.0, (a.y + b.y) / 2.0, 0.0};
}

} // namespace qx::kernel
