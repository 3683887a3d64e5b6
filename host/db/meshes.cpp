// Meshes whose vertices are objects of their own, their vertices and faces.
#include "db/FieldTable.h"
#include "db/VertexCursor.h"
#include "dbents.h"
#include "shape/Sink.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <utility>

using qx::db::FieldTable;
using qx::db::Role;
using qx::db::VertexCursor;

ACRX_DEFINE_MEMBERS(AcDbPolygonMeshVertex, AcDbVertex, L"VERTEX")
ACRX_DEFINE_MEMBERS(AcDbPolyFaceMeshVertex, AcDbVertex, L"VERTEX")
ACRX_DEFINE_MEMBERS(AcDbFaceRecord, AcDbVertex, L"VERTEX")
ACRX_DEFINE_MEMBERS(AcDbPolygonMesh, AcDbEntity, L"POLYLINE")
ACRX_DEFINE_MEMBERS(AcDbPolyFaceMesh, AcDbEntity, L"POLYLINE")

namespace {

/// The points of a mesh that are drawn, in order.
class SurfacePoints {
public:
    explicit SurfacePoints(const AcDbPolygonMesh& mesh) : cursor_{mesh} {}
    std::optional<AcGePoint3d> next() {
        while (const AcDbPolygonMeshVertex* vertex = cursor_.next())
            if (vertex->vertexType() != AcDb::k3dControlVertex) return vertex->position();
        return std::nullopt;
    }
    void skip(std::size_t count) {
        while (count > 0 && next()) --count;
    }

private:
    VertexCursor<AcDbPolygonMeshVertex> cursor_;
};

/// Draws segments between points that go side by side.
void join(SurfacePoints from, SurfacePoints to, qx::shape::Sink& sink) {
    for (auto begin = from.next(), end = to.next(); begin && end; begin = from.next(), end = to.next())
        sink.segment({*begin, *end});
}

/// A face's corners that there are.
struct Corners {
    std::array<AcGePoint3d, 4> points;
    std::array<bool, 4> isHidden; ///< the edge that begins there
    std::size_t count = 0;

    void draw(qx::shape::Sink& sink) const {
        if (count == 1) sink.segment({points[0], points[0]});
        for (std::size_t i = 0; i < (count > 2 ? count : count / 2); ++i)
            sink.segment({points[i], points[(i + 1) % count], false, false, isHidden[i]});
    }
};

} // namespace

// ---- faces

const FieldTable& AcDbFaceRecord::table() {
    static const FieldTable fields = [] {
        std::vector<qx::db::Field> list;
        for (std::size_t i = 0; i < 4; ++i)
            list.push_back({Role::integer, static_cast<std::int16_t>(71 + i),
                            static_cast<std::uint16_t>(offsetof(Data, vertices) + i * sizeof(Adesk::Int32))});
        return FieldTable::ofEntity(sizeof(Data), list);
    }();
    return fields;
}

Acad::ErrorStatus AcDbFaceRecord::getVertexAt(Adesk::UInt16 corner, Adesk::Int32& vertex) const {
    if (corner >= 4) return Acad::eInvalidIndex;
    vertex = data_.vertices[corner];
    return Acad::eOk;
}

// ---- meshes

const FieldTable& AcDbVertexMesh::table() {
    static const FieldTable fields =
        FieldTable::ofEntity(sizeof(Data), {
                                               {Role::height, 39, offsetof(Data, thickness)},
                                               {Role::integer, 70, offsetof(Data, flags)},
                                               {Role::integer, 71, offsetof(Data, m)},
                                               {Role::integer, 72, offsetof(Data, n)},
                                               {Role::integer, 73, offsetof(Data, mDensity)},
                                               {Role::integer, 74, offsetof(Data, nDensity)},
                                           });
    return fields;
}

std::size_t AcDbPolygonMesh::rowLength() const {
    const Adesk::Int32 length = isSmoothed() && data_.nDensity > 0 ? data_.nDensity : data_.n;
    return static_cast<std::size_t>(std::max(length, 1));
}

void AcDbPolygonMesh::shape(qx::shape::Sink& sink) const {
    const std::size_t length = rowLength();
    SurfacePoints points{*this};
    AcGePoint3d rowBegin, before;
    std::size_t count = 0;
    for (auto point = points.next(); point; point = points.next(), ++count) {
        const std::size_t column = count % length;
        if (column == 0)
            rowBegin = *point;
        else
            sink.segment({before, *point});
        if (isNClosed() && column > 0 && column + 1 == length) sink.segment({*point, rowBegin});
        before = *point;
    }
    if (count == 1) sink.segment({before, before});
    if (count <= length) return;
    SurfacePoints nextRow{*this}, lastRow{*this};
    nextRow.skip(length);
    join(SurfacePoints{*this}, std::move(nextRow), sink);
    lastRow.skip((count - 1) / length * length);
    if (isMClosed()) join(std::move(lastRow), SurfacePoints{*this}, sink);
}

void AcDbPolyFaceMesh::shape(qx::shape::Sink& sink) const {
    VertexCursor<AcDbVertex> parts{*this}, corners{*this};
    while (const AcDbVertex* part = parts.next()) {
        const AcDbFaceRecord* face = AcDbFaceRecord::cast(part);
        Corners found;
        for (Adesk::UInt16 corner = 0; face && corner < 4; ++corner) {
            Adesk::Int32 index = 0;
            face->getVertexAt(corner, index);
            const auto distance = static_cast<std::size_t>(std::abs(std::int64_t{index}));
            const auto* vertex = AcDbPolyFaceMeshVertex::cast(
                distance > 0 ? corners.at(qx::db::RecordChain::ahead(objectId().record(), distance))
                             : nullptr);
            if (!vertex) continue;
            found.points[found.count] = vertex->position();
            found.isHidden[found.count++] = index < 0;
        }
        found.draw(sink);
    }
}
