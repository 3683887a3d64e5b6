#include "ed/picking.h"

#include "shape/NearestSink.h"
#include "shape/WindowSink.h"

#include <algorithm>
#include <limits>

namespace qx::ed {
namespace {

template <class Visit> void forEachSelectable(const db::Drawing& drawing, const Visit& visit) {
    drawing.forEachInModelSpace([&](db::Record* record) {
        if (!drawing.isSelectable(record)) return;
        if (const AcDbEntity* entity = drawing.liveEntity(record)) visit(record, *entity);
    });
}

} // namespace

double pixelSize(const db::Drawing& drawing) {
    constexpr double widthInPixels = 1024, heightInPixels = 768;
    const shape::Box box = drawing.extentsAtOpening();
    if (box.isEmpty()) return 1;
    const AcGeVector3d size = box.max - box.min;
    const double pixel = std::max(size.x / widthInPixels, size.y / heightInPixels);
    return pixel > 0 && std::isfinite(pixel) ? pixel : 1;
}

// Distances that differ by rounding only are equal: where two lines cross, both are hit.
db::Record* pickedAt(const db::Drawing& drawing, const AcGePoint3d& point, double reach) {
    const double same = std::max(reach * 1e-9, std::numeric_limits<double>::min());
    db::Record* best = nullptr;
    double bestDistance = reach;
    forEachSelectable(drawing, [&](db::Record* record, const AcDbEntity& entity) {
        shape::NearestSink nearest{point, std::min(bestDistance + 2 * same, reach + same)};
        entity.shape(nearest);
        if (!nearest.hasFoot() || nearest.distance() > bestDistance + same) return;
        best = record;
        bestDistance = std::min(bestDistance, nearest.distance());
    });
    return best;
}

std::vector<db::Record*> foundIn(const db::Drawing& drawing, const AcGePoint3d& corner,
                                 const AcGePoint3d& opposite, Rectangle rectangle) {
    std::vector<db::Record*> found;
    forEachSelectable(drawing, [&](db::Record* record, const AcDbEntity& entity) {
        shape::WindowSink window{corner, opposite};
        entity.shape(window);
        if (rectangle == Rectangle::window ? window.allInside() : window.anyTouches())
            found.push_back(record);
    });
    return found;
}

} // namespace qx::ed
