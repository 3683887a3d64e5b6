// Circles and circular arcs in a plane; angles in radians from a reference direction, in the arc's own sense.
#pragma once

#include "gearc3d.h"
#include "gepnt2d.h"

class AcGeCircArc2d {
public:
    /// The unit circle.
    AcGeCircArc2d() : AcGeCircArc2d{AcGePoint2d::kOrigin, 1} {}
    AcGeCircArc2d(const AcGePoint2d& center, double radius)
        : AcGeCircArc2d{center, radius, 0, 2 * std::numbers::pi} {}
    /// From one angle on to another; angles that are equal, whole turns aside, give a full circle. A zero
    /// reference counts as +X.
    AcGeCircArc2d(const AcGePoint2d& center, double radius, double startAng, double endAng,
                  const AcGeVector2d& refVec = AcGeVector2d::kXAxis, bool isClockWise = false)
        : arc_{inSpace(center),
               isClockWise ? -AcGeVector3d::kZAxis : AcGeVector3d::kZAxis,
               refVec.isZeroLength() ? AcGeVector3d::kXAxis : AcGeVector3d{refVec.x, refVec.y, 0},
               radius,
               startAng,
               endAng} {}

    AcGePoint2d center() const { return inPlane(arc_.center()); }
    double radius() const { return arc_.radius(); }
    /// Unit vector.
    AcGeVector2d refVec() const { return {arc_.refVec().x, arc_.refVec().y}; }
    bool isClockWise() const { return arc_.normal().z < 0; }
    /// As given.
    double startAng() const { return arc_.startAng(); }
    /// Above the start angle, by a full turn at most.
    double endAng() const { return arc_.endAng(); }
    AcGePoint2d startPoint() const { return inPlane(arc_.startPoint()); }
    AcGePoint2d endPoint() const { return inPlane(arc_.endPoint()); }

    /// The nearest point of the arc; its start for the centre of a full circle.
    AcGePoint2d closestPointTo(const AcGePoint2d& point) const {
        return inPlane(arc_.closestPointTo(inSpace(point)));
    }
    double distanceTo(const AcGePoint2d& point) const { return arc_.distanceTo(inSpace(point)); }
    /// True when the arc is at most the point tolerance away, also just past an end.
    bool isOn(const AcGePoint2d& point, const AcGeTol& tol = AcGeContext::gTol) const {
        return arc_.isOn(inSpace(point), tol);
    }

private:
    static AcGePoint3d inSpace(const AcGePoint2d& p) { return {p.x, p.y, 0}; }
    static AcGePoint2d inPlane(const AcGePoint3d& p) { return {p.x, p.y}; }

    AcGeCircArc3d arc_;
};
