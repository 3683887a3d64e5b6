// Bytes as a drawing: refused with a sentence, or read, looked at from all sides, and written back as they
// were.
#include "dbents.h"
#include "dbobjptr.h"
#include "draw/Svg.h"
#include "ed/picking.h"
#include "fuzz/fuzzing.h"
#include "shape/ExtentsSink.h"

#include <string>
#include <vector>

using namespace qx;
using tests::demand;

namespace {

constexpr std::size_t mostPairs = 12; // of entities that are intersected with each other

void measure(const db::Drawing& drawing, db::Record* record) {
    AcDbObjectPointer<AcDbEntity> entity{AcDbObjectId{record}};
    if (entity.openStatus() != Acad::eOk) return;
    AcDbExtents box;
    if (entity->getGeomExtents(box) == Acad::eOk)
        demand(!(box.minPoint().x > box.maxPoint().x), "the box of an entity is not inside out");
    shape::ExtentsSink sink;
    entity->shape(sink);
    static_cast<void>(drawing.lineOf(record->begin));
}

void intersect(const std::vector<db::Record*>& records) {
    for (db::Record* one : records)
        for (db::Record* other : records) {
            AcDbObjectPointer<AcDbEntity> first{AcDbObjectId{one}}, second{AcDbObjectId{other}};
            AcGePoint3dArray points;
            if (first.openStatus() == Acad::eOk && second.openStatus() == Acad::eOk)
                first->intersectWith(second.object(), AcDb::kExtendBoth, points);
        }
}

void lookAt(db::Drawing& drawing) {
    std::vector<db::Record*> some;
    for (db::Record* each = drawing.firstRecord(); each; each = db::RecordChain::next(each)) {
        if (drawing.liveEntity(each)) measure(drawing, each);
        if (drawing.isSelectable(each) && some.size() < mostPairs) some.push_back(each);
    }
    intersect(some);
    for (db::Record* each : drawing.groups()) static_cast<void>(drawing.live(each));
    static_cast<void>(drawing.extentsAtOpening());
    const AcGePoint3d point{1, 1, 0};
    const double reach = 3 * ed::pixelSize(drawing);
    static_cast<void>(ed::pickedAt(drawing, point, reach));
    static_cast<void>(ed::foundIn(drawing, {}, point, ed::Rectangle::crossing));
    static_cast<void>(draw::svgOf(drawing));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = tests::textOf(data, size);
    const auto drawing = db::Drawing::fromBytes(bytes, "fuzz.dxf");
    if (!drawing) {
        demand(drawing.error().starts_with("fuzz.dxf:"), "a refusal names the file");
        return 0;
    }
    lookAt(**drawing);
    demand((*drawing)->toBytes() == bytes, "what was only looked at is written as it was");
    return 0;
}
