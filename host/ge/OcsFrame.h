// The object coordinate system that belongs to an extrusion direction: flat objects are stored in it. Its
// origin is the world's, its axes follow from the direction alone.
#pragma once

#include "gepnt3d.h"
#include "qxexport.h"

namespace qx::ge {

struct OcsFrame {
    AcGeVector3d x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1}; ///< unit vectors in world coordinates

    /// The world frame.
    OcsFrame() = default;
    /// From a direction of any length; a zero or non-finite one counts as +Z.
    QX_HOST_API explicit OcsFrame(const AcGeVector3d& normal);

    /// True when object and world coordinates are the same numbers.
    bool isWorld() const { return z.x == 0 && z.y == 0 && z.z > 0; }

    AcGeVector3d toWorld(const AcGeVector3d& v) const { return isWorld() ? v : x * v.x + y * v.y + z * v.z; }
    AcGeVector3d toOcs(const AcGeVector3d& v) const {
        return isWorld() ? v : AcGeVector3d{x.dotProduct(v), y.dotProduct(v), z.dotProduct(v)};
    }
    AcGePoint3d toWorld(const AcGePoint3d& p) const { return AcGePoint3d::kOrigin + toWorld(p.asVector()); }
    AcGePoint3d toOcs(const AcGePoint3d& p) const { return AcGePoint3d::kOrigin + toOcs(p.asVector()); }
};

} // namespace qx::ge
