// Lines and segments in a plane, seen as the same thing.
#pragma once

#include "gepnt2d.h"
#include "qxlinear.h"

class AcGeLine2d;

class AcGeLinearEnt2d : public qx::ge::LinearEntity<AcGePoint2d, AcGeVector2d> {
public:
    /// The one common point. False, and `out` unchanged, when there is none or more than one: for parallel
    /// and degenerate curves, and where a segment ends before the other curve.
    bool intersectWith(const AcGeLinearEnt2d& other, AcGePoint2d& out,
                       const AcGeTol& tol = AcGeContext::gTol) const {
        const AcGeVector2d a = direction(), b = other.direction();
        const double sine = cross(a, b);
        if (isParallelTo(other, tol) || sine == 0) return false;
        const AcGeVector2d way = other.pointOnLine() - pointOnLine();
        const double here = cross(way, b) / sine, there = cross(way, a) / sine;
        if (!reaches(here, tol) || !other.reaches(there, tol)) return false;
        out = at(here);
        return true;
    }
    /// The line through a point at right angles to this curve, turned counter-clockwise; degenerate when this
    /// is.
    void getPerpLine(const AcGePoint2d& point, AcGeLine2d& perpendicular) const;

protected:
    AcGeLinearEnt2d() = default;

private:
    static double cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }
};

#include "geline2d.h" // body of getPerpLine
