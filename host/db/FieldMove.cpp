#include "db/FieldMove.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qx::db {

namespace {

constexpr double largestCoordinate = 1e15;

bool isUsable(double value) { return std::abs(value) <= largestCoordinate; } // false for NaN as well

bool isUsable(const AcGePoint3d& p) { return isUsable(p.x) && isUsable(p.y) && isUsable(p.z); }

bool hasUnitRows(const AcGeMatrix3d& m) {
    constexpr double tolerance = 1e-9;
    for (int row = 0; row < 3; ++row)
        for (int other = row; other < 3; ++other) {
            double dot = 0;
            for (int i = 0; i < 3; ++i) dot += m.entry[row][i] * m.entry[other][i];
            if (!(std::abs(dot - (row == other ? 1.0 : 0.0)) <= tolerance)) return false;
        }
    return true;
}

} // namespace

bool isTranslation(const AcGeMatrix3d& m) {
    const auto* e = m.entry;
    return e[0][0] == 1 && e[0][1] == 0 && e[0][2] == 0 && e[1][0] == 0 && e[1][1] == 1 && e[1][2] == 0 &&
           e[2][0] == 0 && e[2][1] == 0 && e[2][2] == 1;
}

bool isMotion(const AcGeMatrix3d& m) { return isTranslation(m) || (hasUnitRows(m) && m.det() > 0); }

AcGeVector3d MovableFields::normal() const {
    return table.normal ? memberAt<AcGeVector3d>(base, table.normal->offset) : AcGeVector3d::kZAxis;
}

std::vector<AcDbPolyline::Vertex>* MovableFields::vertices() const {
    return table.vertices ? &memberAt<std::vector<AcDbPolyline::Vertex>>(base, table.vertices->offset) : nullptr;
}

bool MovableFields::counts(const Field& field) const {
    return !field.guard || memberAt<Adesk::Int32>(base, field.guard->either) ||
           memberAt<Adesk::Int32>(base, field.guard->or_);
}

// ---- translations

Shift::Shift(const AcGeVector3d& world, const MovableFields& fields) : fields_{fields}, world_{world}, ocs_{world} {
    const AcGeVector3d normal = fields.normal();
    if (normal.x != 0 || normal.y != 0 || !(normal.z > 0)) ocs_ = ge::OcsFrame{normal}.toOcs(world);
}

unsigned Shift::axes() const {
    return (world_.x != 0 || ocs_.x != 0 ? 1u : 0u) | (world_.y != 0 || ocs_.y != 0 ? 2u : 0u) |
           (world_.z != 0 || ocs_.z != 0 ? 4u : 0u);
}

bool Shift::isSafe() const {
    for (const Field& field : fields_.table.points)
        if (fields_.counts(field) && !isUsable(memberAt<AcGePoint3d>(fields_.base, field.offset) + by(field)))
            return false;
    if (const auto* vertices = fields_.vertices()) {
        for (const auto& vertex : *vertices)
            if (!isUsable(vertex.x + ocs_.x) || !isUsable(vertex.y + ocs_.y)) return false;
        if (!isUsable(fields_.elevation() + ocs_.z)) return false;
    }
    return !fields_.xdata || std::ranges::all_of(fields_.xdata->points, [&](const XDataPoint& each) {
        return each.code != XDataPoint::position || isUsable(each.value + world_);
    });
}

void Shift::apply() const {
    for (const Field& field : fields_.table.points)
        if (fields_.counts(field)) memberAt<AcGePoint3d>(fields_.base, field.offset) += by(field);
    if (auto* vertices = fields_.vertices()) {
        for (auto& vertex : *vertices) {
            vertex.x += ocs_.x;
            vertex.y += ocs_.y;
        }
        fields_.elevation() += ocs_.z;
    }
    if (!fields_.xdata) return;
    for (XDataPoint& each : fields_.xdata->points)
        if (each.code == XDataPoint::position) each.value += world_;
}

// ---- rotations

Motion::Motion(const AcGeMatrix3d& matrix, const MovableFields& fields)
    : matrix_{matrix}, fields_{fields}, before_{fields.normal()}, after_{matrix * fields.normal()} {
    const AcGeVector3d xAxis = after_.toOcs(matrix * before_.x);
    turnDegrees_ = std::atan2(xAxis.y, xAxis.x) * 180 / std::numbers::pi;
}

AcGePoint3d Motion::moved(const Field& field) const {
    const auto& point = memberAt<AcGePoint3d>(fields_.base, field.offset);
    return field.role == Role::worldPoint ? matrix_ * point : movedInPlane(point);
}

double Motion::turned(double degrees) const {
    const double sum = std::fmod(degrees + turnDegrees_, 360.0);
    return sum < 0 ? sum + 360.0 : sum;
}

bool Motion::isSafe() const {
    for (const Field& field : fields_.table.points)
        if (fields_.counts(field) && !isUsable(moved(field))) return false;
    if (const auto* vertices = fields_.vertices())
        for (const auto& vertex : *vertices)
            if (!isUsable(movedInPlane({vertex.x, vertex.y, fields_.elevation()}))) return false;
    return !fields_.xdata || std::ranges::all_of(fields_.xdata->points, [&](const XDataPoint& each) {
        return each.code != XDataPoint::position || isUsable(matrix_ * each.value);
    });
}

void Motion::turn(const Field& field) const {
    if (field.role == Role::angleDegrees) {
        auto& degrees = memberAt<double>(fields_.base, field.offset);
        degrees = turned(degrees);
    } else {
        auto& normal = memberAt<AcGeVector3d>(fields_.base, field.offset);
        normal = matrix_ * normal;
    }
}

// The vertices of a flat entity share one plane; where its origin goes says how high the plane comes to lie.
void Motion::apply() const {
    for (const Field& field : fields_.table.points)
        if (fields_.counts(field)) memberAt<AcGePoint3d>(fields_.base, field.offset) = moved(field);
    if (auto* vertices = fields_.vertices()) {
        double& elevation = fields_.elevation();
        for (auto& vertex : *vertices) {
            const AcGePoint3d point = movedInPlane({vertex.x, vertex.y, elevation});
            vertex.x = point.x;
            vertex.y = point.y;
        }
        elevation = movedInPlane({0, 0, elevation}).z;
    }
    for (const Field& field : fields_.table.turning) turn(field);
    if (!fields_.xdata) return;
    for (XDataPoint& each : fields_.xdata->points)
        each.value = each.code == XDataPoint::position ? matrix_ * each.value
                                                       : AcGePoint3d::kOrigin + matrix_ * each.value.asVector();
}

} // namespace qx::db
