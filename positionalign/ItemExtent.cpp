#include "positionalign/ItemExtent.h"

#include "kernel/entityAccess.h"
#include "kernel/midpoint.h"

#include <algorithm>
#include <limits>

namespace qx::positionalign {

ItemExtent measured(std::span<const AcDbObjectId> members, Axis axis) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    double min = infinity, max = -infinity, firstCentre = infinity, lastCentre = -infinity;
    for (const AcDbObjectId id : members) {
        AcDbExtents box;
        kernel::readExtents(id, box);
        const double centre = coordinate(cornerOf(box, Corner::centre), axis);
        min = std::min(min, coordinate(box.minPoint(), axis));
        max = std::max(max, coordinate(box.maxPoint(), axis));
        firstCentre = std::min(firstCentre, centre);
        lastCentre = std::max(lastCentre, centre);
    }
    return {min, max, (firstCentre + lastCentre) / 2.0};
}

AcGePoint3d cornerOf(const AcDbExtents& box, Corner corner) {
    if (corner == Corner::centre) return kernel::midpointXY(box.minPoint(), box.maxPoint());
    return corner == Corner::min ? box.minPoint() : box.maxPoint();
}

AcGeVector3d along(Axis axis, double distance, double z) {
    return axis == Axis::x ? AcGeVector3d{distance, 0, z} : AcGeVector3d{0, distance, z};
}

} // namespace qx::positionalign
