#include "db/FieldTable.h"
#include "dbpl.h"

#include <algorithm>
#include <cstring>

namespace qx::db {

namespace {

struct Stretch {
    std::byte* bytes;
    std::size_t size;
};

/// Calls `visit` for each stretch of memory that the object's state consists of, always in the same order. None of
/// them changes its size while the object lives.
template <class Visit> void forEachStretch(AcDbObject& object, Visit&& visit) {
    const FieldTable* table = object.fieldTable();
    if (!table) return;
    void* base = object.fieldBase();
    visit(Stretch{static_cast<std::byte*>(base), table->plainSize});
    if (table->vertices) {
        auto& vertices = memberAt<std::vector<AcDbPolyline::Vertex>>(base, table->vertices->offset);
        visit(Stretch{reinterpret_cast<std::byte*>(vertices.data()), vertices.size() * sizeof vertices[0]});
    }
    if (XDataPoints* xdata = object.xdataPoints())
        visit(Stretch{reinterpret_cast<std::byte*>(xdata->points.data()), xdata->points.size() * sizeof(XDataPoint)});
}

/// Calls `visit` with each coordinate, always in the same order.
template <class Visit> void forEachCoordinate(AcDbObject& object, unsigned axes, Visit&& visit) {
    const FieldTable& table = *object.fieldTable();
    void* base = object.fieldBase();
    const auto visitPoint = [&](double& x, double& y, double& z) {
        if (axes & 1) visit(x);
        if (axes & 2) visit(y);
        if (axes & 4) visit(z);
    };
    for (const Field& field : table.points) {
        auto& point = memberAt<AcGePoint3d>(base, field.offset);
        visitPoint(point.x, point.y, point.z);
    }
    if (table.vertices) {
        for (auto& vertex : memberAt<std::vector<AcDbPolyline::Vertex>>(base, table.vertices->offset)) {
            if (axes & 1) visit(vertex.x);
            if (axes & 2) visit(vertex.y);
        }
        if (axes & 4) visit(memberAt<double>(base, table.vertices->elevationOffset));
    }
    if (XDataPoints* xdata = object.xdataPoints())
        for (XDataPoint& each : xdata->points) visitPoint(each.value.x, each.value.y, each.value.z);
}

} // namespace

std::size_t stateSize(AcDbObject& object) {
    std::size_t size = 0;
    forEachStretch(object, [&](Stretch stretch) { size += stretch.size; });
    return (size + 7) / 8 * 8;
}

void saveState(AcDbObject& object, std::byte* to) {
    forEachStretch(object, [&](Stretch stretch) {
        if (stretch.size) std::memcpy(to, stretch.bytes, stretch.size);
        to += stretch.size;
    });
}

void swapState(AcDbObject& object, std::byte* with) {
    forEachStretch(object, [&](Stretch stretch) {
        std::swap_ranges(stretch.bytes, stretch.bytes + stretch.size, with);
        with += stretch.size;
    });
}

std::size_t coordinateCount(AcDbObject& object, unsigned axes) {
    std::size_t count = 0;
    forEachCoordinate(object, axes, [&](double) { ++count; });
    return count;
}

void saveCoordinates(AcDbObject& object, unsigned axes, double* to) {
    forEachCoordinate(object, axes, [&](double value) { *to++ = value; });
}

void swapCoordinates(AcDbObject& object, unsigned axes, double* with) {
    forEachCoordinate(object, axes, [&](double& value) { std::swap(value, *with++); });
}

} // namespace qx::db
