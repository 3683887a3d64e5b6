#include "db/FieldMove.h"

#include "db/GroupWalk.h"

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
    forEachListed(fields, [&](GroupValue& each) {
        if (each.role == Role::worldPoint) visitPoint(each.value, world);
        if (each.role == Role::flatPoint && axes & 1) visit(each.value.x, ocs.x);
        if (each.role == Role::flatPoint && axes & 2) visit(each.value.y, ocs.y);
    });
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
    std::size_t points = fields_.table->points.size(), flatPoints = 0;
    if (const Vertices* vertices = verticesOf(fields_)) flatPoints = vertices->size();
    forEachListed(fields_, [&](const GroupValue& each) {
        points += each.role == Role::worldPoint;
        flatPoints += each.role == Role::flatPoint;
    });
    return points * all + flatPoints * inPlane + (fields_.table->elevation ? axes_ >> 2 : 0);
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
    if (const double* elevation = elevationOf(fields)) elevation_ = *elevation;

    constexpr double leastDegrees = 1e-13; // less is the rounding of the frames
    const AcGeVector3d xAxis = after_.toOcs(matrix * before_.x);
    turnDegrees_ = std::atan2(xAxis.y, xAxis.x) * 180 / std::numbers::pi;
    if (std::abs(turnDegrees_) < leastDegrees) turnDegrees_ = 0;
}

AcGePoint3d Motion::moved(const PointField& field) const {
    return changed(field.isWorld ? Role::worldPoint : Role::ocsPoint,
                   memberAt<AcGePoint3d>(fields_.base, field.offset));
}

double Motion::turned(double degrees) const {
    if (turnDegrees_ == 0) return degrees;
    const double sum = std::fmod(degrees + turnDegrees_, 360.0);
    return sum < 0 ? sum + 360.0 : sum;
}

AcGePoint3d Motion::changed(Role role, const AcGePoint3d& value) const {
    const auto plain = [](const AcGeVector3d& v) { return AcGePoint3d::kOrigin + withPlainZeros(v); };
    switch (role) {
    case Role::worldPoint:
        return matrix_ * value;
    case Role::ocsPoint:
        return movedInPlane(value);
    case Role::flatPoint: {
        const AcGePoint3d point = movedInPlane({value.x, value.y, elevation_});
        return {point.x, point.y, 0};
    }
    case Role::vector:
        return plain(matrix_ * value.asVector());
    case Role::direction:
        return plain(matrix_ * value.asVector() / scale_);
    case Role::flatVector: {
        const AcGeVector3d image = after_.toOcs(matrix_ * before_.toWorld(value.asVector()));
        return plain({image.x, image.y, 0});
    }
    case Role::normal:
        return AcGePoint3d::kOrigin + normal_;
    default:
        return {changed(role, value.x), value.y, value.z};
    }
}

double Motion::changed(Role role, double value) const {
    constexpr double degree = std::numbers::pi / 180;
    switch (role) {
    case Role::angleDegrees:
        return turned(value);
    case Role::angleRadians:
        return turnDegrees_ == 0 ? value : turned(value / degree) * degree;
    case Role::arcDegrees:
        return value + turnDegrees_;
    case Role::clockwiseDegrees:
        return value - turnDegrees_;
    case Role::length:
        return value * scale_;
    case Role::height:
        return value * heightScale_;
    default:
        return value;
    }
}

// Angles and normals can't go too far, nor can lengths that stay.
bool Motion::isSafe(Role role, const AcGePoint3d& value) const {
    switch (role) {
    case Role::worldPoint:
    case Role::ocsPoint:
    case Role::flatPoint:
    case Role::vector:
    case Role::flatVector:
        return isUsable(changed(role, value));
    case Role::length:
    case Role::height:
        return scale_ == 1 || isUsable(value.x * scale_);
    default:
        return true;
    }
}

AcGePoint3d Motion::valueOf(const Field& field) const {
    if (field.isPoint()) return memberAt<AcGePoint3d>(fields_.base, field.offset);
    return {memberAt<double>(fields_.base, field.offset), 0, 0};
}

bool Motion::isSafe() const {
    bool isSafe = true;
    for (const PointField& field : fields_.table->points)
        if (counts(field, fields_.base)) isSafe = isSafe && isUsable(moved(field));
    for (const Field& field : fields_.table->untranslated)
        isSafe = isSafe && this->isSafe(field.role, valueOf(field));
    if (fields_.table->elevation) isSafe = isSafe && isUsable(movedElevation());
    if (const Vertices* vertices = verticesOf(fields_))
        for (const auto& vertex : *vertices)
            isSafe = isSafe && isUsable(movedInPlane({vertex.x, vertex.y, elevation_}));
    if (const AllWidths* widths = widthsOf(fields_))
        for (const auto& each : *widths)
            isSafe = isSafe && isUsable(each.start * scale_) && isUsable(each.end * scale_);
    forEachListed(fields_,
                  [&](const GroupValue& each) { isSafe = isSafe && this->isSafe(each.role, each.value); });
    return isSafe;
}

void Motion::change(const Field& field) const {
    const AcGePoint3d value = changed(field.role, valueOf(field));
    if (field.isPoint())
        memberAt<AcGePoint3d>(fields_.base, field.offset) = value;
    else
        memberAt<double>(fields_.base, field.offset) = value.x;
}

// The vertices of a flat entity share one plane; where its origin goes says how high the plane comes to lie.
void Motion::apply() const {
    for (const PointField& field : fields_.table->points)
        if (counts(field, fields_.base)) memberAt<AcGePoint3d>(fields_.base, field.offset) = moved(field);
    if (Vertices* vertices = verticesOf(fields_))
        for (auto& vertex : *vertices) {
            const AcGePoint3d point = movedInPlane({vertex.x, vertex.y, elevation_});
            vertex.x = point.x;
            vertex.y = point.y;
        }
    if (AllWidths* widths = widthsOf(fields_))
        for (auto& each : *widths) each = {each.start * scale_, each.end * scale_};
    forEachListed(fields_, [&](GroupValue& each) { each.value = changed(each.role, each.value); });
    if (double* elevation = elevationOf(fields_)) *elevation = movedElevation();
    for (const Field& field : fields_.table->untranslated)
        if (counts(field, fields_.base)) change(field);
}

} // namespace qx::db
