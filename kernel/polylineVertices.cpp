#include "kernel/polylineVertices.h"

#include "dbobjptr.h"
#include "kernel/classTests.h"

#include <memory>

namespace qx::kernel {
namespace {

Acad::ErrorStatus read(const AcDbPolyline& polyline, AcGePoint3dArray& vertices) {
    for (unsigned i = 0; i < polyline.numVerts(); ++i) {
        AcGePoint3d point;
        polyline.getPointAt(i, point);
        vertices.append(point);
    }
    return Acad::eOk;
}

/// Vertices that are objects of their own; `visit` is called with each, open.
template <class Vertex, class Polyline, class Visit>
Acad::ErrorStatus forEachVertex(const Polyline& polyline, const Visit& visit) {
    const std::unique_ptr<AcDbObjectIterator> each{polyline.vertexIterator()};
    for (; !each->done(); each->step()) {
        const AcDbObjectPointer<Vertex> vertex{each->objectId()};
        if (vertex.openStatus() != Acad::eOk) return vertex.openStatus();
        visit(*vertex.object());
    }
    return Acad::eOk;
}

Acad::ErrorStatus read(const AcDb2dPolyline& polyline, AcGePoint3dArray& vertices) {
    return forEachVertex<AcDb2dVertex>(polyline, [&](const AcDb2dVertex& vertex) {
        if (vertex.vertexType() != AcDb::k2dSplineCtlVertex) vertices.append(polyline.vertexPosition(vertex));
    });
}

Acad::ErrorStatus read(const AcDb3dPolyline& polyline, AcGePoint3dArray& vertices) {
    return forEachVertex<AcDb3dPolylineVertex>(polyline, [&](const AcDb3dPolylineVertex& vertex) {
        if (vertex.vertexType() != AcDb::k3dControlVertex) vertices.append(vertex.position());
    });
}

} // namespace

Acad::ErrorStatus readPolylineVertices(AcDbEntity& entity, AcGePoint3dArray& vertices) {
    if (const auto* polyline = asPolyline2d(&entity)) return read(*polyline, vertices);
    if (const auto* polyline = asPolyline3d(&entity)) return read(*polyline, vertices);
    if (const auto* polyline = asPolyline(&entity)) return read(*polyline, vertices);
    return Acad::eOk;
}

bool isPolyline(AcDbEntity& entity) {
    return asPolyline(&entity) || asPolyline2d(&entity) || asPolyline3d(&entity);
}

} // namespace qx::kernel
