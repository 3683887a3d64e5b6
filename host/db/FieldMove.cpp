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

using Vertices = std::vector<AcDbPolyline::Vertex>;

Vertices* verticesOf(const Fields& fields) {
    const VertexGroups* groups = fields.table->vertices;
    return groups ? &memberAt<Vertices>(fields.base, groups->offset) : nullptr;
}

double& elevationOf(const Fields& fields) {
    return memberAt<double>(fields.base, fields.table->vertices->elevationOffset);
}

const AcGeVector3d& normalOf(const Fields& fields) {
    const Field* normal = fields.table->normal;
    return normal ? memberAt<AcGeVector3d>(fields.base, normal->offset) : AcGeVector3d::kZAxis;
}

bool counts(const PointField& field, void* base) {
    return !field.guard || memberAt<Adesk::Int32>(base, field.guard->either) ||
           memberAt<Adesk::Int32>(base, field.guard->or_);
}

} // namespace

bool isTranslation(const AcGeMatrix3d& m) {
    const auto* e = m.entry;
    return e[0][0] == 1 && e[0][1] == 0 && e[0][2] == 0 && e[1][0] == 0 && e[1][1] == 1 && e[1][2] == 0 &&
           e[2][0] == 0 && e[2][1] == 0 && e[2][2] == 1;
}

bool isMotion(const AcGeMatrix3d& m) { return isTranslation(m) || (hasUnitRows(m) && m.det() > 0); }

// ---- translations

namespace {

/// Calls `visit` with each coordinate along the axes and with what a shift adds to it, always in the same
/// order.
template <class Visit>
void forEachCoordinate(const Fields& fields, unsigned axes, const AcGeVector3d& world,
                       const AcGeVector3d& ocs, Visit&& visit) {
    const auto visitPoint = [&](AcGePoint3d& point, const AcGeVector3d& by) {
        if (axes & 1) visit(point.x, by.x);
        if (axes & 2) visit(point.y, by.y);
        if (axes & 4) visit(point.z, by.z);
    };
    constexpr AcGeVector3d nothing{0, 0, 0};
    for (const PointField& field : fields.table->points)
        visitPoint(memberAt<AcGePoint3d>(fields.base, field.offset), !counts(field, fields.base) ? nothing
                                                                     : field.isWorld             ? world
                                                                                                 : ocs);
    if (Vertices* vertices = verticesOf(fields)) {
        for (auto& vertex : *vertices) {
            if (axes & 1) visit(vertex.x, ocs.x);
            if (axes & 2) visit(vertex.y, ocs.y);
        }
        if (axes & 4) visit(elevationOf(fields), ocs.z);
    }
    if (!fields.xdata) return;
    for (XDataPoint& each : fields.xdata->points)
        visitPoint(each.value, each.code == XDataPoint::position ? world : nothing);
}

unsigned axesOf(const AcGeVector3d& v) {
    return (v.x != 0 ? 1u : 0u) | (v.y != 0 ? 2u : 0u) | (v.z != 0 ? 4u : 0u);
}

} // namespace

Shift::Shift(const AcGeVector3d& world, const Fields& fields)
    : fields_{fields}, world_{world}, ocs_{world}, axes_{axesOf(world)} {
    const AcGeVector3d& normal = normalOf(fields);
    if (normal.x == 0 && normal.y == 0 && normal.z > 0) return; // nearly always
    ocs_ = ge::OcsFrame{normal}.toOcs(world);
    axes_ |= axesOf(ocs_);
}

bool Shift::isSafe() const {
    bool isSafe = true;
    forEachCoordinate(fields_, 7, world_, ocs_,
                      [&](double value, double by) { isSafe &= isUsable(value + by); });
    return isSafe;
}

void Shift::apply(double* replaced) const {
    if (replaced)
        forEachCoordinate(fields_, axes_, world_, ocs_, [&](double& value, double by) {
            *replaced++ = value;
            value += by;
        });
    else
        forEachCoordinate(fields_, axes_, world_, ocs_, [](double& value, double by) { value += by; });
}

std::size_t Shift::coordinateCount() const {
    const std::size_t inPlane = (axes_ & 1) + (axes_ >> 1 & 1), all = inPlane + (axes_ >> 2);
    const std::size_t points =
        fields_.table->points.size() + (fields_.xdata ? fields_.xdata->points.size() : 0);
    const Vertices* vertices = verticesOf(fields_);
    return points * all + (vertices ? vertices->size() * inPlane + (axes_ >> 2) : 0);
}

void swapCoordinates(const Fields& fields, unsigned axes, double* with) {
    const AcGeVector3d nothing;
    forEachCoordinate(fields, axes, nothing, nothing,
                      [&](double& value, double) { std::swap(value, *with++); });
}

// ---- rotations

Motion::Motion(const AcGeMatrix3d& matrix, const Fields& fields)
    : matrix_{matrix}, fields_{fields}, before_{normalOf(fields)}, after_{matrix * normalOf(fields)} {
    const AcGeVector3d xAxis = after_.toOcs(matrix * before_.x);
    turnDegrees_ = std::atan2(xAxis.y, xAxis.x) * 180 / std::numbers::pi;
}

AcGePoint3d Motion::moved(const PointField& field) const {
    const auto& point = memberAt<AcGePoint3d>(fields_.base, field.offset);
    return field.isWorld ? matrix_ * point : movedInPlane(point);
}

double Motion::turned(double degrees) const {
    const double sum = std::fmod(degrees + turnDegrees_, 360.0);
    return sum < 0 ? sum + 360.0 : sum;
}

bool Motion::isSafe() const {
    for (const PointField& field : fields_.table->points)
        if (counts(field, fields_.base) && !isUsable(moved(field))) return false;
    if (const Vertices* vertices = verticesOf(fields_))
        for (const auto& vertex : *vertices)
            if (!isUsable(movedInPlane({vertex.x, vertex.y, elevationOf(fields_)}))) return false;
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
    for (const PointField& field : fields_.table->points)
        if (counts(field, fields_.base)) memberAt<AcGePoint3d>(fields_.base, field.offset) = moved(field);
    if (Vertices* vertices = verticesOf(fields_)) {
        double& elevation = elevationOf(fields_);
        for (auto& vertex : *vertices) {
            const AcGePoint3d point = movedInPlane({vertex.x, vertex.y, elevation});
            vertex.x = point.x;
            vertex.y = point.y;
        }
        elevation = movedInPlane({0, 0, elevation}).z;
    }
    for (const Field& field : fields_.table->turning) turn(field);
    if (!fields_.xdata) return;
    for (XDataPoint& each : fields_.xdata->points)
        each.value = each.code == XDataPoint::position
                         ? matrix_ * each.value
                         : AcGePoint3d::kOrigin + matrix_ * each.value.asVector();
}

} // namespace qx::db
