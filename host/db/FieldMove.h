// Motions applied to the fields of one object: first asked whether they are safe, then done, so that an
// object is either moved as a whole or left alone.
#pragma once

#include "db/FieldTable.h"
#include "dbpl.h"
#include "ge/OcsFrame.h"

namespace qx::db {

/// True when the matrix only moves: its upper left part is exactly the identity.
bool isTranslation(const AcGeMatrix3d& matrix);
/// True for a rotation, a translation and what they make together, to within 1e-9.
bool isMotion(const AcGeMatrix3d& matrix);

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

/// Any motion.
class Motion {
public:
    /// `matrix` must satisfy isMotion().
    Motion(const AcGeMatrix3d& matrix, const Fields& fields);

    bool isSafe() const;
    void apply() const;

private:
    AcGePoint3d moved(const PointField& field) const;
    AcGePoint3d movedInPlane(const AcGePoint3d& ocs) const {
        return after_.toOcs(matrix_ * before_.toWorld(ocs));
    }
    double turned(double degrees) const;
    void turn(const Field& field) const;

    const AcGeMatrix3d& matrix_;
    const Fields& fields_;
    ge::OcsFrame before_, after_;
    double turnDegrees_;
};

} // namespace qx::db
