#include "db/FieldTable.h"
#include "db/GroupWalk.h"
#include "db/splineGroups.h"
#include "dblead.h"
#include "shape/PolylinePen.h"

#include <cstddef>

using qx::db::FieldTable;
using qx::db::Role;
using qx::db::ValuesOf;

ACRX_DEFINE_MEMBERS(AcDbLeader, AcDbCurve, L"LEADER")

namespace {
constexpr int vertex = 10;
constexpr qx::db::ListedGroup groups[] = {{vertex, Role::worldPoint}};
} // namespace

const FieldTable& AcDbLeader::table() {
    static const qx::db::ListedGroups lists{offsetof(Data, groups), {groups}};
    static const FieldTable fields =
        FieldTable::ofEntity(offsetof(Data, groups),
                             {
                                 {Role::subclass, 100, 0, 0, "AcDbLeader"},
                                 {Role::integer, 72, offsetof(Data, pathType)},
                                 {Role::vertices, 10, 0},
                                 {Role::normal, 210, offsetof(Data, normal)},
                                 {Role::direction, 211, offsetof(Data, horizontal), 1},
                                 {Role::vector, 212, offsetof(Data, blockOffset)},
                                 {Role::vector, 213, offsetof(Data, annotationOffset)},
                             },
                             nullptr, &lists);
    return fields;
}

bool AcDbLeader::afterReading(const qx::db::Drawing&) {
    if (isSplined()) addDerivatives(data_.groups, vertex, {});
    return true;
}

int AcDbLeader::numVertices() const { return static_cast<int>(countOf(data_.groups.values, vertex)); }

AcGePoint3d AcDbLeader::vertexAt(int index) const {
    ValuesOf vertices{data_.groups.values, vertex};
    const qx::db::GroupValue* found = index < 0 ? nullptr : vertices.next();
    for (int i = 0; i < index && found; ++i) found = vertices.next();
    return found ? found->value : AcGePoint3d::kOrigin;
}

void AcDbLeader::shape(qx::shape::Sink& sink) const {
    if (isSplined()) return drawThroughPoints(data_.groups.values, vertex, false, sink);
    qx::shape::PolylinePen pen{sink, AcGeVector3d::kZAxis, false};
    ValuesOf vertices{data_.groups.values, vertex};
    while (const qx::db::GroupValue* each = vertices.next()) pen.vertex(each->value, 0);
    pen.finish();
}

Acad::ErrorStatus AcDbLeader::getStartPoint(AcGePoint3d& point) const {
    if (numVertices() == 0) return Acad::eNotApplicable;
    point = vertexAt(0);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::getEndPoint(AcGePoint3d& point) const {
    if (numVertices() == 0) return Acad::eNotApplicable;
    point = vertexAt(numVertices() - 1);
    return Acad::eOk;
}
