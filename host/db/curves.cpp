// Lines, points, circles, arcs and lightweight polylines: field tables and shapes.
#include "db/FieldTable.h"
#include "dbents.h"
#include "dbpl.h"
#include "ge/OcsFrame.h"
#include "shape/PolylinePen.h"

#include <cmath>
#include <numbers>

using qx::db::FieldTable;
using qx::db::Role;
using qx::ge::OcsFrame;

ACRX_DEFINE_MEMBERS(AcDbLine, AcDbCurve, L"LINE")
ACRX_DEFINE_MEMBERS(AcDbPoint, AcDbEntity, L"POINT")
ACRX_DEFINE_MEMBERS(AcDbCircle, AcDbCurve, L"CIRCLE")
ACRX_DEFINE_MEMBERS(AcDbArc, AcDbCurve, L"ARC")
ACRX_DEFINE_MEMBERS(AcDbPolyline, AcDbCurve, L"LWPOLYLINE")

namespace {

constexpr double degree = std::numbers::pi / 180;

double inOneTurn(double radians) {
    const double rest = std::fmod(radians, 2 * std::numbers::pi);
    return rest < 0 ? rest + 2 * std::numbers::pi : rest;
}

/// The point at the angle, of a circle or an arc.
template <class Data> AcGePoint3d onCircle(const Data& data, double degrees) {
    const double angle = degrees * degree;
    const AcGeVector3d arm{std::cos(angle) * data.radius, std::sin(angle) * data.radius, 0};
    return OcsFrame{data.normal}.toWorld(data.centre + arm);
}

} // namespace

Acad::ErrorStatus AcDbCurve::getStartPoint(AcGePoint3d&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::getEndPoint(AcGePoint3d&) const { return Acad::eNotApplicable; }

// ---- line and point

AcDbLine::AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) {
    data_.start = start;
    data_.end = end;
}

const FieldTable& AcDbLine::table() {
    static const FieldTable fields =
        FieldTable::ofEntity(sizeof(Data), {
                                               {Role::subclass, 100, 0, 0, "AcDbLine"},
                                               {Role::height, 39, offsetof(Data, thickness)},
                                               {Role::worldPoint, 10, offsetof(Data, start)},
                                               {Role::worldPoint, 11, offsetof(Data, end)},
                                               {Role::normal, 210, offsetof(Data, normal)},
                                           });
    return fields;
}

void AcDbLine::shape(qx::shape::Sink& sink) const { sink.segment({data_.start, data_.end, true, true}); }

Acad::ErrorStatus AcDbLine::getStartPoint(AcGePoint3d& point) const {
    point = data_.start;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getEndPoint(AcGePoint3d& point) const {
    point = data_.end;
    return Acad::eOk;
}

const FieldTable& AcDbPoint::table() {
    static const FieldTable fields =
        FieldTable::ofEntity(sizeof(Data), {
                                               {Role::subclass, 100, 0, 0, "AcDbPoint"},
                                               {Role::height, 39, offsetof(Data, thickness)},
                                               {Role::worldPoint, 10, offsetof(Data, position)},
                                               {Role::normal, 210, offsetof(Data, normal)},
                                               {Role::angleDegrees, 50, offsetof(Data, angleDegrees)},
                                           });
    return fields;
}

void AcDbPoint::shape(qx::shape::Sink& sink) const { sink.segment({data_.position, data_.position}); }

// ---- circle and arc

AcDbCircle::AcDbCircle(const AcGePoint3d& centre, const AcGeVector3d& normal, double radius) {
    data_.centre = OcsFrame{normal}.toOcs(centre);
    data_.normal = normal;
    data_.radius = radius;
}

const FieldTable& AcDbCircle::table() {
    static const FieldTable fields =
        FieldTable::ofEntity(sizeof(Data), {
                                               {Role::subclass, 100, 0, 0, "AcDbCircle"},
                                               {Role::height, 39, offsetof(Data, thickness)},
                                               {Role::ocsPoint, 10, offsetof(Data, centre)},
                                               {Role::length, 40, offsetof(Data, radius)},
                                               {Role::normal, 210, offsetof(Data, normal)},
                                           });
    return fields;
}

AcGePoint3d AcDbCircle::center() const { return OcsFrame{data_.normal}.toWorld(data_.centre); }

void AcDbCircle::shape(qx::shape::Sink& sink) const {
    const OcsFrame frame{data_.normal};
    sink.arc(qx::shape::fullCircle(frame.toWorld(data_.centre), frame.x, frame.y, data_.radius));
}

Acad::ErrorStatus AcDbCircle::getStartPoint(AcGePoint3d& point) const {
    point = onCircle(data_, 0);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::getEndPoint(AcGePoint3d& point) const { return getStartPoint(point); }

AcDbArc::AcDbArc(const AcGePoint3d& centre, double radius, double startAngle, double endAngle)
    : AcDbArc{centre, AcGeVector3d::kZAxis, radius, startAngle, endAngle} {}

AcDbArc::AcDbArc(const AcGePoint3d& centre, const AcGeVector3d& normal, double radius, double startAngle,
                 double endAngle) {
    data_.centre = OcsFrame{normal}.toOcs(centre);
    data_.normal = normal;
    data_.radius = radius;
    data_.startDegrees = inOneTurn(startAngle) / degree;
    data_.endDegrees = inOneTurn(endAngle) / degree;
}

const FieldTable& AcDbArc::table() {
    static const FieldTable fields =
        FieldTable::ofEntity(sizeof(Data), {
                                               {Role::subclass, 100, 0, 0, "AcDbCircle"},
                                               {Role::height, 39, offsetof(Data, thickness)},
                                               {Role::ocsPoint, 10, offsetof(Data, centre)},
                                               {Role::length, 40, offsetof(Data, radius)},
                                               {Role::normal, 210, offsetof(Data, normal)},
                                               {Role::subclass, 100, 0, 0, "AcDbArc"},
                                               {Role::angleDegrees, 50, offsetof(Data, startDegrees)},
                                               {Role::angleDegrees, 51, offsetof(Data, endDegrees)},
                                           });
    return fields;
}

AcGePoint3d AcDbArc::center() const { return OcsFrame{data_.normal}.toWorld(data_.centre); }
double AcDbArc::startAngle() const { return inOneTurn(data_.startDegrees * degree); }
double AcDbArc::endAngle() const { return inOneTurn(data_.endDegrees * degree); }

void AcDbArc::shape(qx::shape::Sink& sink) const {
    const OcsFrame frame{data_.normal};
    const double start = data_.startDegrees * degree;
    auto arc = qx::shape::circleArc(frame.toWorld(data_.centre), frame.x, frame.y, data_.radius, start,
                                    qx::shape::sweepBetween(start, data_.endDegrees * degree));
    arc.extends = true;
    sink.arc(arc);
}

Acad::ErrorStatus AcDbArc::getStartPoint(AcGePoint3d& point) const {
    point = onCircle(data_, data_.startDegrees);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::getEndPoint(AcGePoint3d& point) const {
    point = onCircle(data_, data_.endDegrees);
    return Acad::eOk;
}

// ---- lightweight polyline

const FieldTable& AcDbPolyline::table() {
    static const qx::db::VertexGroups vertexGroups{offsetof(Data, vertices), offsetof(Data, widths)};
    static const FieldTable fields =
        FieldTable::ofEntity(offsetof(Data, vertices),
                             {
                                 {Role::subclass, 100, 0, 0, "AcDbPolyline"},
                                 {Role::height, 39, offsetof(Data, thickness)},
                                 {Role::integer, 70, offsetof(Data, flags)},
                                 {Role::length, 43, offsetof(Data, constantWidth)},
                                 {Role::elevation, 38, offsetof(Data, elevation)},
                                 {Role::vertices, 10, 0},
                                 {Role::normal, 210, offsetof(Data, normal)},
                             },
                             &vertexGroups);
    return fields;
}

bool AcDbPolyline::isClosed() const { return data_.flags & 1; }

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned index, AcGePoint2d& point) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    point = {data_.vertices[index].x, data_.vertices[index].y};
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned index, AcGePoint3d& point) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    const Vertex& vertex = data_.vertices[index];
    point = OcsFrame{data_.normal}.toWorld(AcGePoint3d{vertex.x, vertex.y, data_.elevation});
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getBulgeAt(unsigned index, double& bulge) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    bulge = data_.vertices[index].bulge;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getWidthsAt(unsigned index, double& startWidth, double& endWidth) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    const bool hasOwn = index < data_.widths.size();
    startWidth = hasOwn ? data_.widths[index].start : data_.constantWidth;
    endWidth = hasOwn ? data_.widths[index].end : data_.constantWidth;
    return Acad::eOk;
}

// ---- segments of lightweight polylines

AcDbPolyline::SegType AcDbPolyline::segType(unsigned index) const {
    if (index >= numVerts()) return kEmpty;
    if (numVerts() == 1 || (index + 1 == numVerts() && !isClosed())) return kPoint;
    if (pointAt(index).isEqualTo(pointAt(following(index)))) return kCoincident;
    return qx::shape::isStraight(data_.vertices[index].bulge) ? kLine : kArc;
}

Acad::ErrorStatus AcDbPolyline::expect(SegType type, unsigned index) const {
    if (index >= numVerts()) return Acad::eInvalidIndex;
    return segType(index) == type ? Acad::eOk : Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbPolyline::getLineSegAt(unsigned index, AcGeLineSeg3d& segment) const {
    const Acad::ErrorStatus status = expect(kLine, index);
    if (status != Acad::eOk) return status;
    AcGePoint3d start, end;
    getPointAt(index, start);
    getPointAt(following(index), end);
    segment.set(start, end);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getLineSegAt(unsigned index, AcGeLineSeg2d& segment) const {
    const Acad::ErrorStatus status = expect(kLine, index);
    if (status == Acad::eOk) segment.set(pointAt(index), pointAt(following(index)));
    return status;
}

Acad::ErrorStatus AcDbPolyline::getArcSegAt(unsigned index, AcGeCircArc3d& arc) const {
    const Acad::ErrorStatus status = expect(kArc, index);
    if (status != Acad::eOk) return status;
    const AcGeVector3d up = OcsFrame{data_.normal}.z;
    const double bulge = data_.vertices[index].bulge;
    AcGePoint3d start, end;
    getPointAt(index, start);
    getPointAt(following(index), end);
    const qx::shape::EllipticArc drawn = qx::shape::arcFromBulge(start, end, bulge, up);
    arc = AcGeCircArc3d{drawn.centre, bulge < 0 ? -up : up, drawn.u, drawn.u.length(), 0, drawn.sweep};
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getArcSegAt(unsigned index, AcGeCircArc2d& arc) const {
    const Acad::ErrorStatus status = expect(kArc, index);
    if (status != Acad::eOk) return status;
    const double bulge = data_.vertices[index].bulge;
    const AcGePoint2d start = pointAt(index), end = pointAt(following(index));
    const qx::shape::EllipticArc drawn =
        qx::shape::arcFromBulge({start.x, start.y, 0}, {end.x, end.y, 0}, bulge, AcGeVector3d::kZAxis);
    arc = AcGeCircArc2d{{drawn.centre.x, drawn.centre.y}, drawn.u.length(), 0, drawn.sweep,
                        {drawn.u.x, drawn.u.y},           bulge < 0};
    return Acad::eOk;
}

// ---- changes of lightweight polylines

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned index, const AcGePoint2d& point, double bulge,
                                            double startWidth, double endWidth) {
    if (!objectId().isNull()) return Acad::eNotApplicable;
    if (index > numVerts()) return Acad::eInvalidIndex;
    if (startWidth != 0 || endWidth != 0 || !data_.widths.empty()) {
        data_.widths.resize(data_.vertices.size());
        data_.widths.insert(data_.widths.begin() + index, Widths{startWidth, endWidth});
    }
    data_.vertices.insert(data_.vertices.begin() + index, Vertex{point.x, point.y, bulge});
    return Acad::eOk;
}

void AcDbPolyline::setClosed(Adesk::Boolean closed) {
    assertWriteEnabled();
    touch(8);
    data_.flags = closed ? data_.flags | 1 : data_.flags & ~1;
    forgetBox();
}

void AcDbPolyline::shape(qx::shape::Sink& sink) const {
    const OcsFrame frame{data_.normal};
    qx::shape::PolylinePen pen{sink, frame.z, isClosed()};
    for (const Vertex& each : data_.vertices)
        pen.vertex(frame.toWorld(AcGePoint3d{each.x, each.y, data_.elevation}), each.bulge);
    pen.finish();
}

Acad::ErrorStatus AcDbPolyline::getStartPoint(AcGePoint3d& point) const {
    return numVerts() ? getPointAt(0, point) : Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbPolyline::getEndPoint(AcGePoint3d& point) const {
    if (numVerts() == 0) return Acad::eNotApplicable;
    return getPointAt(isClosed() ? 0 : numVerts() - 1, point);
}
