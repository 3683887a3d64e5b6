#include "ed/picking.h"

#include "dbgroup.h"
#include "ed/Session.h"
#include "shape/NearestSink.h"
#include "shape/WindowSink.h"

#include <algorithm>
#include <limits>

namespace qx::ed {
namespace {

/// All entities of model space, or those of a list.
struct Everything {
    const db::Drawing& drawing;
    template <class Visit> void forEach(Visit&& visit) const { drawing.forEachInModelSpace(visit); }
};
struct Listed {
    std::span<db::Record* const> records;
    template <class Visit> void forEach(Visit&& visit) const { std::ranges::for_each(records, visit); }
};

template <class Entities, class Visit>
void forEachSelectable(const db::Drawing& drawing, const Entities& entities, const Visit& visit) {
    entities.forEach([&](db::Record* record) {
        if (!drawing.isSelectable(record)) return;
        if (const AcDbEntity* entity = drawing.liveEntity(record)) visit(record, *entity);
    });
}

// Distances that differ by rounding only are equal: where two lines cross, both are hit.
template <class Entities>
db::Record* pickedAmong(const db::Drawing& drawing, const Entities& entities, const AcGePoint3d& point,
                        double reach) {
    const double same = std::max(reach * 1e-9, std::numeric_limits<double>::min());
    db::Record* best = nullptr;
    double bestDistance = reach;
    forEachSelectable(drawing, entities, [&](db::Record* record, const AcDbEntity& entity) {
        shape::NearestSink nearest{point, std::min(bestDistance + 2 * same, reach + same)};
        entity.shape(nearest);
        if (!nearest.hasFoot() || nearest.distance() > bestDistance + same) return;
        best = record;
        bestDistance = std::min(bestDistance, nearest.distance());
    });
    return best;
}

template <class Entities>
std::vector<db::Record*> foundAmong(const db::Drawing& drawing, const Entities& entities,
                                    const AcGePoint3d& corner, const AcGePoint3d& opposite,
                                    Rectangle rectangle) {
    std::vector<db::Record*> found;
    forEachSelectable(drawing, entities, [&](db::Record* record, const AcDbEntity& entity) {
        shape::WindowSink window{corner, opposite};
        entity.shape(window);
        if (rectangle == Rectangle::window ? window.allInside() : window.anyTouches())
            found.push_back(record);
    });
    return found;
}

std::vector<db::Record*> withoutRepeats(const db::Drawing& drawing, const std::vector<db::Record*>& records) {
    RecordSet set{&drawing};
    set.add(records);
    return set.members();
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

db::Record* pickedAt(const db::Drawing& drawing, const AcGePoint3d& point, double reach) {
    return pickedAmong(drawing, Everything{drawing}, point, reach);
}

db::Record* pickedAt(const db::Drawing& drawing, std::span<db::Record* const> entities,
                     const AcGePoint3d& point, double reach) {
    return pickedAmong(drawing, Listed{entities}, point, reach);
}

std::vector<db::Record*> foundIn(const db::Drawing& drawing, const AcGePoint3d& corner,
                                 const AcGePoint3d& opposite, Rectangle rectangle) {
    return foundAmong(drawing, Everything{drawing}, corner, opposite, rectangle);
}

std::vector<db::Record*> foundIn(const db::Drawing& drawing, std::span<db::Record* const> entities,
                                 const AcGePoint3d& corner, const AcGePoint3d& opposite,
                                 Rectangle rectangle) {
    return foundAmong(drawing, Listed{entities}, corner, opposite, rectangle);
}

std::vector<db::Record*> withGroups(const Session& session, db::Record* picked, std::size_t* groups) {
    const int style = session.variables().number("PICKSTYLE");
    std::vector<db::Record*> all{picked};
    if (style != 1 && style != 3) return all;
    const db::Drawing& drawing = *session.drawing();
    for (db::Record* each : drawing.groups()) {
        const auto* group = AcDbGroup::cast(drawing.live(each));
        if (!group || !group->isSelectable()) continue;
        const auto& members = group->members();
        if (std::ranges::find(members, picked) == members.end()) continue;
        if (groups) ++*groups;
        std::ranges::copy_if(members, std::back_inserter(all),
                             [&](db::Record* member) { return member && drawing.isSelectable(member); });
    }
    return withoutRepeats(drawing, all);
}

} // namespace qx::ed
