// Areas with three or four straight edges: filled ones in a plane, and faces in space.
#include "db/Drawing.h"
#include "db/FieldTable.h"
#include "dbents.h"
#include "ge/OcsFrame.h"
#include "shape/Sink.h"

#include <algorithm>
#include <array>

using qx::db::Drawing;
using qx::db::FieldTable;
using qx::db::Guard;
using qx::db::Role;
using qx::ge::OcsFrame;

ACRX_DEFINE_MEMBERS(AcDbSolid, AcDbEntity, L"SOLID")
ACRX_DEFINE_MEMBERS(AcDbTrace, AcDbEntity, L"TRACE")
ACRX_DEFINE_MEMBERS(AcDbFace, AcDbEntity, L"3DFACE")

namespace {

constexpr int fourthCorner = 13; // group

template <class Data> constexpr std::uint16_t offsetOfCorner(std::size_t index) {
    return static_cast<std::uint16_t>(offsetof(Data, corners) + index * sizeof(AcGePoint3d));
}

/// Draws the edges from corner to corner, those without length left out.
void drawAround(const std::array<AcGePoint3d, 4>& corners, Adesk::Int32 hiddenEdges, qx::shape::Sink& sink) {
    bool isDrawn = false;
    for (std::size_t i = 0; i < 4; ++i) {
        const AcGePoint3d &from = corners[i], &to = corners[(i + 1) % 4];
        if (from.x == to.x && from.y == to.y && from.z == to.z) continue;
        sink.segment({from, to, false, false, (hiddenEdges >> i & 1) != 0});
        isDrawn = true;
    }
    if (!isDrawn) sink.segment({corners[0], corners[0]});
}

} // namespace

// ---- filled areas

const FieldTable& AcDbFilledArea::table() {
    static constexpr Guard onlyIfThere{offsetof(Data, hasFourth), offsetof(Data, hasFourth)};
    static const FieldTable fields = FieldTable::ofEntity(
        sizeof(Data), {
                          {Role::subclass, 100, 0, 0, "AcDbTrace"},
                          {Role::ocsPoint, 10, offsetOfCorner<Data>(0)},
                          {Role::ocsPoint, 11, offsetOfCorner<Data>(1)},
                          {Role::ocsPoint, 12, offsetOfCorner<Data>(2)},
                          {Role::ocsPoint, fourthCorner, offsetOfCorner<Data>(3), 0, nullptr, &onlyIfThere},
                          {Role::height, 39, offsetof(Data, thickness)},
                          {Role::normal, 210, offsetof(Data, normal)},
                      });
    return fields;
}

bool AcDbFilledArea::afterReading(const Drawing& drawing) {
    data_.hasFourth =
        qx::db::presentGroups(drawing.bytesOf(objectId().record()), {fourthCorner, fourthCorner + 10});
    return true;
}

Acad::ErrorStatus AcDbFilledArea::getPointAt(Adesk::UInt16 index, AcGePoint3d& point) const {
    if (index >= 4) return Acad::eInvalidIndex;
    point = OcsFrame{data_.normal}.toWorld(data_.corners[index == 3 && !data_.hasFourth ? 2 : index]);
    return Acad::eOk;
}

void AcDbFilledArea::shape(qx::shape::Sink& sink) const {
    std::array<AcGePoint3d, 4> around;
    for (Adesk::UInt16 index = 0; index < 4; ++index) getPointAt(index, around[index]);
    std::swap(around[2], around[3]);
    drawAround(around, 0, sink);
}

// ---- faces

const FieldTable& AcDbFace::table() {
    static constexpr Guard onlyIfThere{offsetof(Data, hasFourth), offsetof(Data, hasFourth)};
    static const FieldTable fields = FieldTable::ofEntity(
        sizeof(Data), {
                          {Role::subclass, 100, 0, 0, "AcDbFace"},
                          {Role::worldPoint, 10, offsetOfCorner<Data>(0)},
                          {Role::worldPoint, 11, offsetOfCorner<Data>(1)},
                          {Role::worldPoint, 12, offsetOfCorner<Data>(2)},
                          {Role::worldPoint, fourthCorner, offsetOfCorner<Data>(3), 0, nullptr, &onlyIfThere},
                          {Role::integer, 70, offsetof(Data, hiddenEdges)},
                      });
    return fields;
}

bool AcDbFace::afterReading(const Drawing& drawing) {
    data_.hasFourth = qx::db::presentGroups(drawing.bytesOf(objectId().record()),
                                            {fourthCorner, fourthCorner + 10, fourthCorner + 20});
    return true;
}

Acad::ErrorStatus AcDbFace::getVertexAt(Adesk::UInt16 index, AcGePoint3d& point) const {
    if (index >= 4) return Acad::eInvalidIndex;
    point = data_.corners[index == 3 && !data_.hasFourth ? 2 : index];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::isEdgeVisibleAt(Adesk::UInt16 index, Adesk::Boolean& isVisible) const {
    if (index >= 4) return Acad::eInvalidIndex;
    isVisible = (data_.hiddenEdges >> index & 1) == 0;
    return Acad::eOk;
}

void AcDbFace::shape(qx::shape::Sink& sink) const {
    std::array<AcGePoint3d, 4> around;
    for (Adesk::UInt16 index = 0; index < 4; ++index) getVertexAt(index, around[index]);
    drawAround(around, data_.hiddenEdges, sink);
}
