#include "shape/Primitives.h"

namespace qx::shape {

Box transformed(const Box& box, const AcGeMatrix3d& matrix) {
    Box image;
    if (box.isEmpty()) return image;
    for (const double x : {box.min.x, box.max.x})
        for (const double y : {box.min.y, box.max.y})
            for (const double z : {box.min.z, box.max.z}) image.add(matrix * AcGePoint3d{x, y, z});
    return image;
}

} // namespace qx::shape
