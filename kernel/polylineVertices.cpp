#include "kernel/polylineVertices.h"

#include "dbobjptr.h"
#include "kernel/classTests.h"

#include <memory>

namespace qx::kernel {
namespace {

AcGePoint3dArray verticesOf(const AcDbPolyline& polyline) {
    AcGePoint3dArray points(static_cast<int>(polyline.numVerts()));
    for (unsigned i = 0; i < polyline.numVerts(); ++i) {
        AcGePoint3d point;
        polyline.getPointAt(i, point);
        points.append(point);
    }
    return points;
}

/// Vertices that are objects of their own; `positionOf` leaves out those that it gives no point for.
template <class Vertex, class Polyline, class PositionOf>
AcGePoint3dArray ownedVertices(const Polyline& polyline, const PositionOf& positionOf) {
    AcGePoint3dArray points;
    const std::unique_ptr<AcDbObjectIterator> each{polyline.vertexIterator()};
    for (; !each->done(); each->step()) {
        const AcDbObjectPointer<Vertex> vertex{each->objectId()};
        if (vertex.openStatus() == Acad::eOk) positionOf(*vertex.object(), points);
    }
    return points;
}

AcGePoint3dArray verticesOf(const AcDb2dPolyline& polyline) {
    return ownedVertices<AcDb2dVertex>(polyline, [&](const AcDb2dVertex& vertex, AcGePoint3dArray& points) {
        if (vertex.vertexType() != AcDb::k2dSplineCtlVertex) points.append(polyline.vertexPosition(vertex));
    });
}

AcGePoint3dArray verticesOf(const AcDb3dPolyline& polyline) {
    return ownedVertices<AcDb3dPolylineVertex>(
        polyline, [](const AcDb3dPolylineVertex& vertex, AcGePoint3dArray& points) {
            if (vertex.vertexType() != AcDb::k3dControlVertex) points.append(vertex.position());
        });
}

} // namespace

AcGePoint3dArray polylineVertices(AcDbEntity& entity) {
    if (const auto* polyline = asPolyline2d(&entity)) return verticesOf(*polyline);
    if (const auto* polyline = asPolyline3d(&entity)) return verticesOf(*polyline);
    if (const auto* polyline = asPolyline(&entity)) return verticesOf(*polyline);
    return AcGePoint3dArray();
}

bool isPolyline(AcDbEntity& entity) {
    return asPolyline(&entity) || asPolyline2d(&entity) || asPolyline3d(&entity);
}

} // namespace qx::kernel
