#include "kernel/lightCopy.h"

namespace qx::kernel {

std::unique_ptr<AcDbPolyline> lightCopy(AcDb2dPolyline& polyline) {
    auto copy = std::make_unique<AcDbPolyline>();
    AcDbEntity* source = &polyline;
    if (copy->convertFrom(source, false) != Acad::eOk) return nullptr;
    return copy;
}

} // namespace qx::kernel
