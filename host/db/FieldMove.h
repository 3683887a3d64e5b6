// Motions applied to the fields of one object: first asked whether they are safe, then done, so that an object is
// either moved as a whole or left alone.
#pragma once

#include "db/FieldTable.h"
#include "dbpl.h"
#include "ge/OcsFrame.h"

namespace qx::db {

/// True when the matrix only moves: its upper left part is exactly the identity.
bool isTranslation(const AcGeMatrix3d& matrix);
/// True for a rotation, a translation and what they make together, to within 1e-9.
bool isMotion(const AcGeMatrix3d& matrix);

/// The fields of an object, its vertices and the points in its extended data.
struct MovableFields {
    const FieldTable& table;
    void* base;
    XDataPoints* xdata;

    explicit MovableFields(AcDbObject& object)
        : table{*object.fieldTable()}, base{object.fieldBase()}, xdata{object.xdataPoints()} {}
    AcGeVector3d normal() const;
    std::vector<AcDbPolyline::Vertex>* vertices() const;
    double& elevation() const { return memberAt<double>(base, table.vertices->elevationOffset); }
    bool counts(const Field& field) const;
};

/// A translation: one vector is added to each point, so that numbers it does not reach keep their last digit.
class Shift {
public:
    Shift(const AcGeVector3d& world, const MovableFields& fields);

    /// False when a coordinate would not be finite or would lie beyond 1e15.
    bool isSafe() const;
    void apply() const;
    /// Which coordinates it changes, as a bit each: 1 for x, 2 for y, 4 for z.
    unsigned axes() const;

private:
    const AcGeVector3d& by(const Field& field) const { return field.role == Role::worldPoint ? world_ : ocs_; }

    const MovableFields& fields_;
    AcGeVector3d world_, ocs_;
};

/// Any motion.
class Motion {
public:
    /// `matrix` must satisfy isMotion().
    Motion(const AcGeMatrix3d& matrix, const MovableFields& fields);

    bool isSafe() const;
    void apply() const;

private:
    AcGePoint3d moved(const Field& field) const;
    AcGePoint3d movedInPlane(const AcGePoint3d& ocs) const { return after_.toOcs(matrix_ * before_.toWorld(ocs)); }
    double turned(double degrees) const;
    void turn(const Field& field) const;

    const AcGeMatrix3d& matrix_;
    const MovableFields& fields_;
    ge::OcsFrame before_, after_;
    double turnDegrees_;
};

} // namespace qx::db
