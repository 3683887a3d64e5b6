// The user coordinate system of a drawing: what people and commands speak of. The axes are unit vectors at
// right angles, as drawings store them.
#pragma once

#include "db/Drawing.h"
#include "ed/points.h"

namespace qx::ed {

class QX_HOST_API UserFrame {
public:
    explicit UserFrame(const db::UserCoordinateSystem& system);

    AcGePoint3d toWorld(const AcGePoint3d& user) const;
    AcGePoint3d toUser(const AcGePoint3d& world) const;
    /// The typed point in user coordinates; `last` is what a relative one counts from.
    AcGePoint3d resolved(const TypedPoint& typed, const AcGePoint3d& last) const;

private:
    AcGePoint3d origin_;
    AcGeVector3d x_, y_, z_;
};

} // namespace qx::ed
