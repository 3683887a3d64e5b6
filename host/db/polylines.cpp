// Polylines whose vertices are objects of their own, and the vertices.
#include "db/Drawing.h"
#include "db/FieldTable.h"
#include "db/PathEnds.h"
#include "db/VertexCursor.h"
#include "dbents.h"
#include "dbpl.h"
#include "ge/OcsFrame.h"
#include "shape/PolylinePen.h"

using qx::db::Drawing;
using qx::db::FieldTable;
using qx::db::Kind;
using qx::db::PathEnds;
using qx::db::Record;
using qx::db::RecordChain;
using qx::db::Role;
using qx::ge::OcsFrame;

ACRX_DEFINE_MEMBERS(AcDbVertex, AcDbEntity, L"VERTEX")
ACRX_DEFINE_MEMBERS(AcDb2dVertex, AcDbVertex, L"VERTEX")
ACRX_DEFINE_MEMBERS(AcDb3dPolylineVertex, AcDbVertex, L"VERTEX")
ACRX_DEFINE_MEMBERS(AcDb2dPolyline, AcDbCurve, L"POLYLINE")
ACRX_DEFINE_MEMBERS(AcDb3dPolyline, AcDbCurve, L"POLYLINE")

namespace {

constexpr int addedByFitting = 1, hasTangent = 2, onSpline = 8, controlsSpline = 16; // of a vertex
constexpr int isCurveFit = 2, isSpline = 4;                                          // of a polyline
constexpr int quadratic = 5;

/// The first of the header's parts from `record` on that an iterator shows; null when there is none.
Record* shownPart(const Record* header, Record* record) {
    while (record && record->owner == header && record->kind != Kind::sequenceEnd &&
           record->has(Record::erased))
        record = RecordChain::next(record);
    const bool isPart = record && record->owner == header && record->kind != Kind::sequenceEnd;
    return isPart ? record : nullptr;
}

template <class Vertex, class Visit> void forEachVertex(const AcDbCurve& polyline, Visit&& visit) {
    qx::db::VertexCursor<Vertex> cursor{polyline};
    while (const Vertex* vertex = cursor.next()) visit(*vertex);
}

} // namespace

// ---- parts

AcDbObjectIterator::AcDbObjectIterator(const Record* header)
    : header_{header}, part_{header ? shownPart(header, RecordChain::next(header)) : nullptr} {}

void AcDbObjectIterator::step() {
    if (part_) part_ = shownPart(header_, RecordChain::next(part_));
}

bool AcDbVertexPolyline::isPart(AcDbObjectId id) const {
    return !id.isNull() && objectId().record() && id.record()->owner == objectId().record();
}

bool qx::db::arePartsUsable(const Drawing& drawing, const Record* header) {
    bool isGood = true;
    drawing.forEachOwned(header, [&](Record* each) { isGood = isGood && drawing.live(each); });
    return isGood;
}

// ---- vertices

Acad::ErrorStatus AcDbVertex::transformBy(const AcGeMatrix3d&) { return Acad::eMustOpenThruOwner; }

const FieldTable& AcDb2dVertex::table() {
    static constexpr qx::db::Guard onlyWithTangent{offsetof(Data, flags), offsetof(Data, flags), hasTangent};
    static const FieldTable fields = FieldTable::ofEntity(
        sizeof(Data),
        {
            {Role::ocsPoint, 10, offsetof(Data, position)},
            {Role::length, 40, offsetof(Data, startWidth)},
            {Role::length, 41, offsetof(Data, endWidth)},
            {Role::plain, 42, offsetof(Data, bulge)},
            {Role::integer, 70, offsetof(Data, flags)},
            {Role::angleDegrees, 50, offsetof(Data, tangentDegrees), 0, nullptr, &onlyWithTangent},
        });
    return fields;
}

AcDb::Vertex2dType AcDb2dVertex::vertexType() const {
    if (data_.flags & controlsSpline) return AcDb::k2dSplineCtlVertex;
    if (data_.flags & onSpline) return AcDb::k2dSplineFitVertex;
    return data_.flags & addedByFitting ? AcDb::k2dCurveFitVertex : AcDb::k2dVertex;
}

const FieldTable& qx::db::spatialVertexTable() {
    static const FieldTable fields = FieldTable::ofEntity(
        sizeof(SpatialVertexData), {
                                       {Role::worldPoint, 10, offsetof(SpatialVertexData, position)},
                                       {Role::integer, 70, offsetof(SpatialVertexData, flags)},
                                   });
    return fields;
}

// ---- flat polyline

const FieldTable& AcDb2dPolyline::table() {
    static const FieldTable fields =
        FieldTable::ofEntity(sizeof(Data), {
                                               {Role::subclass, 100, 0, 0, "AcDb2dPolyline"},
                                               {Role::height, 39, offsetof(Data, thickness)},
                                               {Role::plain, 10, offsetof(Data, x)},
                                               {Role::plain, 20, offsetof(Data, y)},
                                               {Role::elevation, 30, offsetof(Data, elevation)},
                                               {Role::integer, 70, offsetof(Data, flags)},
                                               {Role::length, 40, offsetof(Data, startWidth)},
                                               {Role::length, 41, offsetof(Data, endWidth)},
                                               {Role::integer, 75, offsetof(Data, curveType)},
                                               {Role::normal, 210, offsetof(Data, normal)},
                                           });
    return fields;
}

AcDb::Poly2dType AcDb2dPolyline::polyType() const {
    if (data_.flags & isSpline)
        return data_.curveType == quadratic ? AcDb::k2dQuadSplinePoly : AcDb::k2dCubicSplinePoly;
    return data_.flags & isCurveFit ? AcDb::k2dFitCurvePoly : AcDb::k2dSimplePoly;
}

AcGePoint3d AcDb2dPolyline::vertexPosition(const AcDb2dVertex& vertex) const {
    const AcGePoint3d position = vertex.position();
    return OcsFrame{data_.normal}.toWorld(AcGePoint3d{position.x, position.y, data_.elevation});
}

template <class Visit> void AcDb2dPolyline::forEachShown(Visit&& visit) const {
    const OcsFrame frame{data_.normal};
    forEachVertex<AcDb2dVertex>(*this, [&](const AcDb2dVertex& vertex) {
        if (vertex.vertexType() == AcDb::k2dSplineCtlVertex) return;
        const AcGePoint3d position = vertex.position();
        visit(frame.toWorld(AcGePoint3d{position.x, position.y, data_.elevation}), vertex.bulge());
    });
}

void AcDb2dPolyline::shape(qx::shape::Sink& sink) const {
    qx::shape::PolylinePen pen{sink, OcsFrame{data_.normal}.z, isClosed()};
    forEachShown([&](const AcGePoint3d& point, double bulge) { pen.vertex(point, bulge); });
    pen.finish();
}

Acad::ErrorStatus AcDb2dPolyline::getStartPoint(AcGePoint3d& point) const {
    PathEnds ends;
    forEachShown([&](const AcGePoint3d& each, double) { ends.add(each); });
    return ends.giveStart(point);
}

Acad::ErrorStatus AcDb2dPolyline::getEndPoint(AcGePoint3d& point) const {
    PathEnds ends;
    forEachShown([&](const AcGePoint3d& each, double) { ends.add(each); });
    return isClosed() ? ends.giveStart(point) : ends.giveEnd(point);
}

// ---- polyline in space

const FieldTable& AcDb3dPolyline::table() {
    static const FieldTable fields =
        FieldTable::ofEntity(sizeof(Data), {
                                               {Role::subclass, 100, 0, 0, "AcDb3dPolyline"},
                                               {Role::height, 39, offsetof(Data, thickness)},
                                               {Role::integer, 70, offsetof(Data, flags)},
                                               {Role::integer, 75, offsetof(Data, curveType)},
                                           });
    return fields;
}

AcDb::Poly3dType AcDb3dPolyline::polyType() const {
    if (!(data_.flags & isSpline)) return AcDb::k3dSimplePoly;
    return data_.curveType == quadratic ? AcDb::k3dQuadSplinePoly : AcDb::k3dCubicSplinePoly;
}

template <class Visit> void AcDb3dPolyline::forEachShown(Visit&& visit) const {
    forEachVertex<AcDb3dPolylineVertex>(*this, [&](const AcDb3dPolylineVertex& vertex) {
        if (vertex.vertexType() != AcDb::k3dControlVertex) visit(vertex.position());
    });
}

void AcDb3dPolyline::shape(qx::shape::Sink& sink) const {
    qx::shape::PolylinePen pen{sink, AcGeVector3d::kZAxis, isClosed()};
    forEachShown([&](const AcGePoint3d& point) { pen.vertex(point, 0); });
    pen.finish();
}

Acad::ErrorStatus AcDb3dPolyline::getStartPoint(AcGePoint3d& point) const {
    PathEnds ends;
    forEachShown([&](const AcGePoint3d& each) { ends.add(each); });
    return ends.giveStart(point);
}

Acad::ErrorStatus AcDb3dPolyline::getEndPoint(AcGePoint3d& point) const {
    PathEnds ends;
    forEachShown([&](const AcGePoint3d& each) { ends.add(each); });
    return isClosed() ? ends.giveStart(point) : ends.giveEnd(point);
}

// ---- conversion

Acad::ErrorStatus AcDbPolyline::convertFrom(AcDbEntity*& entity, Adesk::Boolean transferId) {
    if (transferId) return Acad::eNotImplementedYet;
    if (!entity) return Acad::eNullEntityPointer;
    const AcDb2dPolyline* source = AcDb2dPolyline::cast(entity);
    if (!source) return Acad::eIllegalEntityType;
    if (!objectId().isNull() || source->polyType() != AcDb::k2dSimplePoly) return Acad::eNotApplicable;
    source->assertReadEnabled();

    constexpr int kept = 1 | 128; // what the flags of both classes mean alike
    const AcDb2dPolyline::Data& from = source->data();
    data_ = {from.entity, from.thickness, from.elevation, 0, from.normal, from.flags & kept, {}, {}};
    setLayerState(source->layerState());
    forEachVertex<AcDb2dVertex>(*source, [&](const AcDb2dVertex& vertex) {
        const bool hasOwn = vertex.startWidth() != 0 || vertex.endWidth() != 0;
        addVertexAt(numVerts(), {vertex.position().x, vertex.position().y}, vertex.bulge(),
                    hasOwn ? vertex.startWidth() : from.startWidth,
                    hasOwn ? vertex.endWidth() : from.endWidth);
    });
    return Acad::eOk;
}
