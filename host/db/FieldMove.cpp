#include "db/FieldMove.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qx::db {

namespace {

constexpr double largestCoordinate = 1e15;

bool isUsable(double value) { return std::abs(value) <= largestCoordinate; } // false for NaN as well

bool isUsable(const AcGePoint3d& p) { return isUsable(p.x) && isUsable(p.y) && isUsable(p.z); }

double dotOfRows(const AcGeMatrix3d& m, int row, int other) {
    return m.entry[row][0] * m.entry[other][0] + m.entry[row][1] * m.entry[other][1] +
           m.entry[row][2] * m.entry[other][2];
}

using Vertices = std::vector<AcDbPolyline::Vertex>;

Vertices* verticesOf(const Fields& fields) {
    const VertexGroups* groups = fields.table->vertices;
    return groups ? &memberAt<Vertices>(fields.base, groups->offset) : nullptr;
}

using AllWidths = std::vector<AcDbPolyline::Widths>;

AllWidths* widthsOf(const Fields& fields) {
    const VertexGroups* groups = fields.table->vertices;
    return groups ? &memberAt<AllWidths>(fields.base, groups->widthsOffset) : nullptr;
}

double* elevationOf(const Fields& fields) {
    const Field* elevation = fields.table->elevation;
    return elevation ? &memberAt<double>(fields.base, elevation->offset) : nullptr;
}

/// For fields and for points among them.
template <class AnyField> bool counts(const AnyField& field, void* base) {
    const Guard* guard = field.guard;
    return !guard || (memberAt<Adesk::Int32>(base, guard->either) & guard->mask) ||
           (memberAt<Adesk::Int32>(base, guard->or_) & guard->mask);
}

} // namespace

const AcGeVector3d& normalOf(const Fields& fields) {
    if (const Field* normal = fields.table->normal)
        return memberAt<AcGeVector3d>(fields.base, normal->offset);
    return fields.normal ? *fields.normal : AcGeVector3d::kZAxis;
}

bool isTranslation(const AcGeMatrix3d& m) {
    const auto* e = m.entry;
    return e[0][0] == 1 && e[0][1] == 0 && e[0][2] == 0 && e[1][0] == 0 && e[1][1] == 1 && e[1][2] == 0 &&
           e[2][0] == 0 && e[2][1] == 0 && e[2][2] == 1;
}

double scaleOf(const AcGeMatrix3d& m) {
    constexpr double tolerance = 1e-9;
    const double square = (dotOfRows(m, 0, 0) + dotOfRows(m, 1, 1) + dotOfRows(m, 2, 2)) / 3;
    if (!(square > 0 && std::isfinite(square))) return 0;
    for (int row = 0; row < 3; ++row)
        for (int other = row; other < 3; ++other) {
            const double expected = row == other ? square : 0;
            if (!(std::abs(dotOfRows(m, row, other) - expected) <= tolerance * square)) return 0;
        }
    return std::abs(square - 1) <= tolerance ? 1 : std::sqrt(square);
}

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
    if (Vertices* vertices = verticesOf(fields))
        for (auto& vertex : *vertices) {
            if (axes & 1) visit(vertex.x, ocs.x);
            if (axes & 2) visit(vertex.y, ocs.y);
        }
    if (double* elevation = axes & 4 ? elevationOf(fields) : nullptr) visit(*elevation, ocs.z);
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
    return points * all + (vertices ? vertices->size() * inPlane : 0) +
           (fields_.table->elevation ? axes_ >> 2 : 0);
}

void swapCoordinates(const Fields& fields, unsigned axes, double* with) {
    const AcGeVector3d nothing;
    forEachCoordinate(fields, axes, nothing, nothing,
                      [&](double& value, double) { std::swap(value, *with++); });
}

// ---- rotations, mirrorings and scales

namespace {

/// Equal but for the rounding of a matrix.
bool isSame(const AcGeVector3d& a, const AcGeVector3d& b) { return (a - b).length() <= 1e-15 * b.length(); }

/// Without negative zeros, which nobody wants to read in a file.
AcGeVector3d withPlainZeros(const AcGeVector3d& v) { return {v.x + 0.0, v.y + 0.0, v.z + 0.0}; }

bool hasLength(const AcGeVector3d& v) { return v.length() > 0 && std::isfinite(v.length()); }

} // namespace

// A normal without a direction counts as Z, and stays as it is where Z would.
Motion::Motion(const AcGeMatrix3d& matrix, double scale, const Fields& fields)
    : matrix_{matrix}, fields_{fields}, scale_{scale},
      heightScale_{matrix.det() < 0 ? -scale : scale}, normal_{normalOf(fields)}, before_{normal_} {
    const AcGeVector3d direction = hasLength(normal_) ? normal_ : before_.z;
    const AcGeVector3d image = matrix * direction / heightScale_;
    if (!isSame(image, direction)) normal_ = withPlainZeros(image);
    after_ = ge::OcsFrame{normal_};

    constexpr double leastDegrees = 1e-13; // less is the rounding of the frames
    const AcGeVector3d xAxis = after_.toOcs(matrix * before_.x);
    turnDegrees_ = std::atan2(xAxis.y, xAxis.x) * 180 / std::numbers::pi;
    if (std::abs(turnDegrees_) < leastDegrees) turnDegrees_ = 0;
}

AcGePoint3d Motion::moved(const PointField& field) const {
    const auto& point = memberAt<AcGePoint3d>(fields_.base, field.offset);
    return field.isWorld ? matrix_ * point : movedInPlane(point);
}

double Motion::turned(double degrees) const {
    if (turnDegrees_ == 0) return degrees;
    const double sum = std::fmod(degrees + turnDegrees_, 360.0);
    return sum < 0 ? sum + 360.0 : sum;
}

bool Motion::isSafe() const {
    for (const PointField& field : fields_.table->points)
        if (counts(field, fields_.base) && !isUsable(moved(field))) return false;
    for (const Field& field : fields_.table->untranslated) {
        if ((field.role == Role::vector || field.role == Role::direction) &&
            !isUsable(AcGePoint3d::kOrigin + matrix_ * memberAt<AcGeVector3d>(fields_.base, field.offset)))
            return false;
        if ((field.role == Role::length || field.role == Role::height) && scale_ != 1 &&
            !isUsable(memberAt<double>(fields_.base, field.offset) * scale_))
            return false;
    }
    const double* elevation = elevationOf(fields_);
    if (elevation && !isUsable(movedElevation(*elevation))) return false;
    if (const Vertices* vertices = verticesOf(fields_))
        for (const auto& vertex : *vertices)
            if (!isUsable(movedInPlane({vertex.x, vertex.y, *elevation}))) return false;
    if (const AllWidths* widths = widthsOf(fields_))
        for (const auto& each : *widths)
            if (!isUsable(each.start * scale_) || !isUsable(each.end * scale_)) return false;
    return !fields_.xdata || std::ranges::all_of(fields_.xdata->points, [&](const XDataPoint& each) {
        return each.code != XDataPoint::position || isUsable(matrix_ * each.value);
    });
}

void Motion::change(const Field& field) const {
    if (field.role == Role::normal) {
        memberAt<AcGeVector3d>(fields_.base, field.offset) = normal_;
    } else if (field.role == Role::vector) {
        auto& vector = memberAt<AcGeVector3d>(fields_.base, field.offset);
        vector = withPlainZeros(matrix_ * vector);
    } else if (field.role == Role::direction) {
        auto& direction = memberAt<AcGeVector3d>(fields_.base, field.offset);
        direction = withPlainZeros(matrix_ * direction / scale_);
    } else {
        auto& value = memberAt<double>(fields_.base, field.offset);
        value = field.role == Role::angleDegrees ? turned(value)
                : field.role == Role::height     ? value * heightScale_
                                                 : value * scale_;
    }
}

// The vertices of a flat entity share one plane; where its origin goes says how high the plane comes to lie.
void Motion::apply() const {
    for (const PointField& field : fields_.table->points)
        if (counts(field, fields_.base)) memberAt<AcGePoint3d>(fields_.base, field.offset) = moved(field);
    double* elevation = elevationOf(fields_);
    if (Vertices* vertices = verticesOf(fields_))
        for (auto& vertex : *vertices) {
            const AcGePoint3d point = movedInPlane({vertex.x, vertex.y, *elevation});
            vertex.x = point.x;
            vertex.y = point.y;
        }
    if (elevation) *elevation = movedElevation(*elevation);
    if (AllWidths* widths = widthsOf(fields_))
        for (auto& each : *widths) each = {each.start * scale_, each.end * scale_};
    for (const Field& field : fields_.table->untranslated)
        if (counts(field, fields_.base)) change(field);
    if (!fields_.xdata) return;
    for (XDataPoint& each : fields_.xdata->points)
        each.value = each.code == XDataPoint::position
                         ? matrix_ * each.value
                         : AcGePoint3d::kOrigin + matrix_ * each.value.asVector();
}

} // namespace qx::db
