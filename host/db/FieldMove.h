// Motions applied to the fields of one object: first asked whether they are safe, then done, so that an
// object is either moved as a whole or left alone.
#pragma once

#include "db/FieldTable.h"
#include "dbpl.h"
#include "ge/OcsFrame.h"

namespace qx::db {

/// True when the matrix only moves: its upper left part is exactly the identity.
bool isTranslation(const AcGeMatrix3d& matrix);
/// The factor by which lengths grow under a rotation, a mirroring, a translation, a uniform scale and what
/// they make together; 0 for any other matrix. Both to within 1e-9: a motion has exactly 1.
double scaleOf(const AcGeMatrix3d& matrix);

/// Of the plane in which an object lies: its own normal, else its owner's, else Z.
const AcGeVector3d& normalOf(const Fields& fields);

/// A translation: one vector is added to each point, so that numbers it does not reach keep their last digit.
class Shift {
public:
    Shift(const AcGeVector3d& world, const Fields& fields);

    /// False when a coordinate would not be finite or would lie beyond 1e15.
    bool isSafe() const;
    /// Moves, and stores the coordinates along axes() as they were in `replaced`, when that is not null.
    void apply(double* replaced) const;
    /// Along which axes it moves, as a bit each: 1 for x, 2 for y, 4 for z.
    unsigned axes() const { return axes_; }
    std::size_t coordinateCount() const;

private:
    const Fields& fields_;
    AcGeVector3d world_, ocs_;
    unsigned axes_;
};

/// Exchanges the coordinates along the axes with those that Shift::apply() stored.
void swapCoordinates(const Fields& fields, unsigned axes, double* with);

/// Any motion, mirroring or uniform scale. A flat object turns with its plane: its new normal is the image of
/// the old one, reversed when the matrix mirrors, so that arcs stay counter-clockwise about it.
class Motion {
public:
    /// `scale` is scaleOf(matrix), not 0.
    Motion(const AcGeMatrix3d& matrix, double scale, const Fields& fields);

    /// False when a number would not be finite or would lie beyond 1e15.
    bool isSafe() const;
    void apply() const;

private:
    AcGePoint3d moved(const PointField& field) const;
    AcGePoint3d movedInPlane(const AcGePoint3d& ocs) const {
        return after_.toOcs(matrix_ * before_.toWorld(ocs));
    }
    double movedElevation() const { return movedInPlane({0, 0, elevation_}).z; }
    double turned(double degrees) const;
    /// A value that plays the role, moved.
    AcGePoint3d changed(Role role, const AcGePoint3d& value) const;
    double changed(Role role, double value) const;
    bool isSafe(Role role, const AcGePoint3d& value) const;
    AcGePoint3d valueOf(const Field& field) const;
    void change(const Field& field) const;

    const AcGeMatrix3d& matrix_;
    const Fields& fields_;
    double scale_, heightScale_; ///< along the plane and along the normal
    AcGeVector3d normal_;
    ge::OcsFrame before_, after_;
    double turnDegrees_;
    double elevation_ = 0; ///< of the plane, before
};

} // namespace qx::db
