#include "db/FieldTable.h"
#include "dbray.h"
#include "dbxline.h"
#include "shape/Sink.h"

using qx::db::FieldTable;
using qx::db::Role;

ACRX_DEFINE_MEMBERS(AcDbRay, AcDbCurve, L"RAY")
ACRX_DEFINE_MEMBERS(AcDbXline, AcDbCurve, L"XLINE")

namespace {

FieldTable tableWith(const char* marker) {
    using Data = qx::db::EndlessLineData;
    return FieldTable::ofEntity(sizeof(Data), {
                                                  {Role::subclass, 100, 0, 0, marker},
                                                  {Role::worldPoint, 10, offsetof(Data, base)},
                                                  {Role::direction, 11, offsetof(Data, direction)},
                                              });
}

} // namespace

const FieldTable& AcDbRay::table() {
    static const FieldTable fields = tableWith("AcDbRay");
    return fields;
}

void AcDbRay::shape(qx::shape::Sink& sink) const { sink.endless({data_.base, data_.direction, false}); }

Acad::ErrorStatus AcDbRay::getStartPoint(AcGePoint3d& point) const {
    point = data_.base;
    return Acad::eOk;
}

const FieldTable& AcDbXline::table() {
    static const FieldTable fields = tableWith("AcDbXline");
    return fields;
}

void AcDbXline::shape(qx::shape::Sink& sink) const { sink.endless({data_.base, data_.direction, true}); }
