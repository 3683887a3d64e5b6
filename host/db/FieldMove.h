// A motion applied to the fields of one object: first asked whether it is safe, then done, so that an object is
// either moved as a whole or left alone.
#pragma once

#include "db/FieldTable.h"
#include "dbpl.h"
#include "ge/OcsFrame.h"

namespace qx::db {

/// True for a rotation, a translation and what they make together, to within 1e-9.
bool isMotion(const AcGeMatrix3d& matrix);

/// A motion as seen from an entity with a certain normal. A pure translation adds one vector to each point, so
/// that numbers it does not reach keep their last digit.
class Mover {
public:
    Mover(const AcGeMatrix3d& motion, const AcGeVector3d& normal);

    AcGePoint3d worldPoint(const AcGePoint3d& p) const { return isTranslation_ ? p + worldShift_ : motion_ * p; }
    AcGePoint3d ocsPoint(const AcGePoint3d& p) const {
        return isTranslation_ ? p + ocsShift_ : after_.toOcs(motion_ * before_.toWorld(p));
    }
    AcGeVector3d vector(const AcGeVector3d& v) const { return isTranslation_ ? v : motion_ * v; }
    double angleDegrees(double degrees) const;

private:
    const AcGeMatrix3d& motion_;
    bool isTranslation_;
    ge::OcsFrame before_, after_;
    AcGeVector3d worldShift_, ocsShift_;
    double turnDegrees_ = 0;
};

class FieldMove {
public:
    /// The matrix must be a motion; everything named must outlive this object.
    FieldMove(const AcGeMatrix3d& motion, const FieldTable& table, void* base, XDataPoints* xdata);

    /// False when a coordinate would not be finite or would lie beyond 1e15.
    bool isSafe() const;
    void apply() const;

private:
    using Vertices = std::vector<AcDbPolyline::Vertex>;
    Vertices* vertices() const;
    double elevation() const;
    AcGePoint3d movedPoint(const Field& field) const;
    AcGePoint3d movedVertex(const AcDbPolyline::Vertex& v, double elevation) const {
        return mover_.ocsPoint({v.x, v.y, elevation});
    }
    void applyToVertices() const;
    void applyTo(const Field& field) const;

    const FieldTable& table_;
    void* base_;
    XDataPoints* xdata_;
    Mover mover_;
};

} // namespace qx::db
