#include "db/FieldTable.h"

#include "dbpl.h"
#include "ge/OcsFrame.h"

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

AcGeVector3d translationOf(const AcGeMatrix3d& m) { return {m.entry[0][3], m.entry[1][3], m.entry[2][3]}; }

AcGeVector3d turned(const AcGeMatrix3d& m, const AcGeVector3d& v) {
    const auto row = [&](int i) { return m.entry[i][0] * v.x + m.entry[i][1] * v.y + m.entry[i][2] * v.z; };
    return {row(0), row(1), row(2)};
}

/// A motion as seen from an entity with a certain normal. A pure translation adds one vector to each point, so
/// that numbers it does not reach keep their last digit.
class Mover {
public:
    Mover(const AcGeMatrix3d& motion, const AcGeVector3d& normal)
        : motion_{motion}, isTranslation_{isTranslation(motion)}, before_{ge::OcsFrame{normal}} {
        if (isTranslation_) {
            worldShift_ = translationOf(motion);
            ocsShift_ = before_.toOcs(worldShift_);
            return;
        }
        after_ = ge::OcsFrame{turned(motion, normal)};
        const AcGeVector3d xAxis = after_.toOcs(turned(motion, before_.x));
        turnDegrees_ = std::atan2(xAxis.y, xAxis.x) * 180 / std::numbers::pi;
    }

    bool turns() const { return !isTranslation_; }
    AcGePoint3d worldPoint(const AcGePoint3d& p) const { return isTranslation_ ? p + worldShift_ : motion_ * p; }
    AcGePoint3d ocsPoint(const AcGePoint3d& p) const {
        return isTranslation_ ? p + ocsShift_ : after_.toOcs(motion_ * before_.toWorld(p));
    }
    AcGeVector3d vector(const AcGeVector3d& v) const { return isTranslation_ ? v : turned(motion_, v); }
    double angleDegrees(double degrees) const {
        if (isTranslation_) return degrees;
        const double turnedBy = std::fmod(degrees + turnDegrees_, 360.0);
        return turnedBy < 0 ? turnedBy + 360.0 : turnedBy;
    }

private:
    const AcGeMatrix3d& motion_;
    bool isTranslation_;
    ge::OcsFrame before_, after_;
    AcGeVector3d worldShift_, ocsShift_;
    double turnDegrees_ = 0;
};

AcGePoint3d movedPoint(const Mover& mover, Role role, const AcGePoint3d& point) {
    return role == Role::worldPoint ? mover.worldPoint(point) : mover.ocsPoint(point);
}

/// A flat entity's vertices share one elevation; the first vertex says where the plane went.
struct FlatMove {
    const Mover& mover;
    double elevation;
    AcGePoint3d moved(const AcDbPolyline::Vertex& v) const { return mover.ocsPoint({v.x, v.y, elevation}); }
};

bool canMove(const Mover& mover, const FieldTable& table, void* base, const FlatMove* flat) {
    for (const Field& field : table.fields)
        if (field.role == Role::worldPoint || field.role == Role::ocsPoint)
            if (!isUsable(movedPoint(mover, field.role, memberAt<AcGePoint3d>(base, field.offset)))) return false;
    if (!flat) return true;
    for (const auto& vertex : memberAt<std::vector<AcDbPolyline::Vertex>>(base, table.vertices->offset))
        if (!isUsable(flat->moved(vertex))) return false;
    return true;
}

void moveVertices(const FieldTable& table, void* base, const FlatMove& flat, double& elevation) {
    for (auto& vertex : memberAt<std::vector<AcDbPolyline::Vertex>>(base, table.vertices->offset)) {
        const AcGePoint3d moved = flat.moved(vertex);
        vertex.x = moved.x;
        vertex.y = moved.y;
    }
    elevation = flat.mover.ocsPoint({0, 0, flat.elevation}).z;
}

void moveField(const Mover& mover, const Field& field, void* base) {
    if (field.role == Role::worldPoint || field.role == Role::ocsPoint) {
        auto& point = memberAt<AcGePoint3d>(base, field.offset);
        point = movedPoint(mover, field.role, point);
    } else if (field.role == Role::normal) {
        auto& vector = memberAt<AcGeVector3d>(base, field.offset);
        vector = mover.vector(vector);
    } else if (field.role == Role::angleDegrees) {
        auto& degrees = memberAt<double>(base, field.offset);
        degrees = mover.angleDegrees(degrees);
    }
}

} // namespace

bool isMotion(const AcGeMatrix3d& m) {
    constexpr double tolerance = 1e-9;
    if (isTranslation(m)) return true;
    for (int row = 0; row < 3; ++row)
        for (int other = row; other < 3; ++other) {
            double dot = 0;
            for (int i = 0; i < 3; ++i) dot += m.entry[row][i] * m.entry[other][i];
            if (!(std::abs(dot - (row == other ? 1.0 : 0.0)) <= tolerance)) return false;
        }
    const auto* e = m.entry;
    const double determinant = e[0][0] * (e[1][1] * e[2][2] - e[1][2] * e[2][1]) -
                               e[0][1] * (e[1][0] * e[2][2] - e[1][2] * e[2][0]) +
                               e[0][2] * (e[1][0] * e[2][1] - e[1][1] * e[2][0]);
    return determinant > 0;
}

bool moveFields(const AcGeMatrix3d& motion, const FieldTable& table, void* base) {
    const AcGeVector3d normal =
        table.normal ? memberAt<AcGeVector3d>(base, table.normal->offset) : AcGeVector3d{0, 0, 1};
    const Mover mover{motion, normal};
    if (!table.vertices) {
        if (!canMove(mover, table, base, nullptr)) return false;
        for (const Field& field : table.fields) moveField(mover, field, base);
        return true;
    }
    double& elevation = memberAt<double>(base, table.vertices->elevationOffset);
    const FlatMove flat{mover, elevation};
    if (!canMove(mover, table, base, &flat)) return false;
    moveVertices(table, base, flat, elevation);
    for (const Field& field : table.fields) moveField(mover, field, base);
    return true;
}

bool moveXDataPoints(const AcGeMatrix3d& motion, XDataPoints& data) {
    const Mover mover{motion, {0, 0, 1}};
    for (const XDataPoint& each : data.points)
        if (each.code == 1011 && !isUsable(mover.worldPoint(each.value))) return false;
    for (XDataPoint& each : data.points)
        each.value = each.code == 1011 ? mover.worldPoint(each.value)
                                       : AcGePoint3d::kOrigin + mover.vector(each.value.asVector());
    return true;
}

} // namespace qx::db
