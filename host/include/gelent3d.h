// Lines and segments in space, seen as the same thing.
#pragma once

#include "gepnt3d.h"
#include "qxlinear.h"

class AcGeLinearEnt3d : public qx::ge::LinearEntity<AcGePoint3d, AcGeVector3d> {
public:
    /// The one common point. False, and `out` unchanged, when there is none or more than one: for parallel
    /// and degenerate curves, for such as pass each other, and where a segment ends before the other curve.
    /// Passing at no more than the rounding of large coordinates counts as meeting.
    bool intersectWith(const AcGeLinearEnt3d& other, AcGePoint3d& out,
                       const AcGeTol& tol = AcGeContext::gTol) const {
        const AcGeVector3d a = direction(), b = other.direction(), normal = a.crossProduct(b);
        if (isParallelTo(other, tol) || normal.lengthSqrd() == 0) return false;
        const AcGeVector3d way = other.pointOnLine() - pointOnLine();
        const double here = way.crossProduct(b).dotProduct(normal) / normal.lengthSqrd();
        const double there = way.crossProduct(a).dotProduct(normal) / normal.lengthSqrd();
        if (!reaches(here, tol) || !other.reaches(there, tol)) return false;
        const AcGePoint3d found = at(here);
        const double rounding = 1e-14 * (found.asVector().length() + way.length());
        if (!(found.distanceTo(other.at(there)) <= std::max(tol.equalPoint(), rounding))) return false;
        out = found;
        return true;
    }

protected:
    AcGeLinearEnt3d() = default;
};
