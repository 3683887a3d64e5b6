#include "db/FieldTable.h"
#include "dbelipse.h"
#include "ge/OcsFrame.h"
#include "shape/Sink.h"
#include "shape/arcs.h"

#include <cmath>

using qx::db::FieldTable;
using qx::db::Role;
using qx::ge::OcsFrame;
using qx::ge::withTangentTimes;
using qx::shape::fullTurn;

ACRX_DEFINE_MEMBERS(AcDbEllipse, AcDbCurve, L"ELLIPSE")

AcDbEllipse::AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& unitNormal,
                         const AcGeVector3d& majorAxis, double radiusRatio, double startAngle,
                         double endAngle) {
    data_.centre = center;
    data_.majorAxis = majorAxis;
    data_.normal = unitNormal;
    data_.ratio = radiusRatio;
    const double tangents = radiusRatio > 0 ? 1 / radiusRatio : 1;
    data_.startParameter = withTangentTimes(tangents, startAngle);
    data_.endParameter = withTangentTimes(tangents, endAngle);
}

const FieldTable& AcDbEllipse::table() {
    static const FieldTable fields =
        FieldTable::ofEntity(sizeof(Data), {
                                               {Role::subclass, 100, 0, 0, "AcDbEllipse"},
                                               {Role::worldPoint, 10, offsetof(Data, centre)},
                                               {Role::vector, 11, offsetof(Data, majorAxis)},
                                               {Role::normal, 210, offsetof(Data, normal)},
                                               {Role::plain, 40, offsetof(Data, ratio), 1},
                                               {Role::plain, 41, offsetof(Data, startParameter)},
                                               {Role::plain, 42, offsetof(Data, endParameter), fullTurn},
                                           });
    return fields;
}

AcGeVector3d AcDbEllipse::minorAxis() const {
    return OcsFrame{data_.normal}.z.crossProduct(data_.majorAxis) * data_.ratio;
}

double AcDbEllipse::minorRadius() const { return majorRadius() * std::abs(data_.ratio); }
double AcDbEllipse::startAngle() const { return withTangentTimes(data_.ratio, data_.startParameter); }
double AcDbEllipse::endAngle() const { return withTangentTimes(data_.ratio, data_.endParameter); }

bool AcDbEllipse::isClosed() const {
    return qx::shape::sweepBetween(data_.startParameter, data_.endParameter) >= fullTurn;
}

Acad::ErrorStatus AcDbEllipse::getStartPoint(AcGePoint3d& point) const {
    point = arc().start();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::getEndPoint(AcGePoint3d& point) const {
    point = arc().end();
    return Acad::eOk;
}

qx::shape::EllipticArc AcDbEllipse::arc() const {
    return qx::shape::ellipticArc(data_.centre, data_.majorAxis, minorAxis(), data_.startParameter,
                                  qx::shape::sweepBetween(data_.startParameter, data_.endParameter));
}

void AcDbEllipse::shape(qx::shape::Sink& sink) const {
    qx::shape::EllipticArc whole = arc();
    whole.extends = true;
    sink.arc(whole);
}
