#include "db/FieldMove.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qx::db {

namespace {

constexpr double largestCoordinate = 1e15;

bool isUsable(double value) { return std::abs(value) <= largestCoordinate; } // false for NaN as well

bool isUsable(const AcGePoint3d& p) { return isUsable(p.x) && isUsable(p.y) && isUsable(p.z); }

bool isTranslation(const AcGeMatrix3d& m) {
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            if (m.entry[row][column] != (row == column ? 1.0 : 0.0)) return false;
    return true;
}

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

AcGeVector3d normalOf(const FieldTable& table, void* base) {
    return table.normal ? memberAt<AcGeVector3d>(base, table.normal->offset) : AcGeVector3d{0, 0, 1};
}

bool counts(const Field& field, void* base) {
    return !field.guard || memberAt<Adesk::Int32>(base, field.guard->either) ||
           memberAt<Adesk::Int32>(base, field.guard->or_);
}

} // namespace

bool isMotion(const AcGeMatrix3d& m) { return isTranslation(m) || (hasUnitRows(m) && m.det() > 0); }

Mover::Mover(const AcGeMatrix3d& motion, const AcGeVector3d& normal)
    : motion_{motion}, isTranslation_{isTranslation(motion)}, before_{normal} {
    if (isTranslation_) {
        worldShift_ = motion.translation();
        ocsShift_ = before_.toOcs(worldShift_);
        return;
    }
    after_ = ge::OcsFrame{motion * normal};
    const AcGeVector3d xAxis = after_.toOcs(motion * before_.x);
    turnDegrees_ = std::atan2(xAxis.y, xAxis.x) * 180 / std::numbers::pi;
}

double Mover::angleDegrees(double degrees) const {
    if (isTranslation_) return degrees;
    const double turned = std::fmod(degrees + turnDegrees_, 360.0);
    return turned < 0 ? turned + 360.0 : turned;
}

FieldMove::FieldMove(const AcGeMatrix3d& motion, const FieldTable& table, void* base, XDataPoints* xdata)
    : table_{table}, base_{base}, xdata_{xdata}, mover_{motion, normalOf(table, base)} {}

FieldMove::Vertices* FieldMove::vertices() const {
    return table_.vertices ? &memberAt<Vertices>(base_, table_.vertices->offset) : nullptr;
}

double FieldMove::elevation() const { return memberAt<double>(base_, table_.vertices->elevationOffset); }

AcGePoint3d FieldMove::movedPoint(const Field& field) const {
    const auto& point = memberAt<AcGePoint3d>(base_, field.offset);
    return field.role == Role::worldPoint ? mover_.worldPoint(point) : mover_.ocsPoint(point);
}

bool FieldMove::isSafe() const {
    for (const Field& field : table_.points)
        if (counts(field, base_) && !isUsable(movedPoint(field))) return false;
    if (const Vertices* all = vertices())
        for (const auto& vertex : *all)
            if (!isUsable(movedVertex(vertex, elevation()))) return false;
    return !xdata_ || std::ranges::all_of(xdata_->points, [&](const XDataPoint& each) {
        return each.code != XDataPoint::position || isUsable(mover_.worldPoint(each.value));
    });
}

// The vertices of a flat entity share one plane; where its origin goes says how high the plane comes to lie.
void FieldMove::applyToVertices() const {
    const double height = elevation();
    for (auto& vertex : *vertices()) {
        const AcGePoint3d moved = movedVertex(vertex, height);
        vertex.x = moved.x;
        vertex.y = moved.y;
    }
    memberAt<double>(base_, table_.vertices->elevationOffset) = mover_.ocsPoint({0, 0, height}).z;
}

void FieldMove::applyTo(const Field& field) const {
    if (field.role == Role::angleDegrees) {
        auto& degrees = memberAt<double>(base_, field.offset);
        degrees = mover_.angleDegrees(degrees);
    } else if (field.role == Role::normal) {
        auto& normal = memberAt<AcGeVector3d>(base_, field.offset);
        normal = mover_.vector(normal);
    } else {
        memberAt<AcGePoint3d>(base_, field.offset) = movedPoint(field);
    }
}

void FieldMove::apply() const {
    for (const Field& field : table_.points)
        if (counts(field, base_)) applyTo(field);
    if (vertices()) applyToVertices();
    for (const Field& field : table_.turning) applyTo(field);
    if (!xdata_) return;
    for (XDataPoint& each : xdata_->points)
        each.value = each.code == XDataPoint::position ? mover_.worldPoint(each.value)
                                                       : AcGePoint3d::kOrigin + mover_.vector(each.value.asVector());
}

} // namespace qx::db
