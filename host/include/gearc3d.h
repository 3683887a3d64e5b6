// Circles and circular arcs in space: counter-clockwise about a normal, angles in radians from a reference
// direction.
#pragma once

#include "gepnt3d.h"
#include "qxexport.h"

class QX_HOST_API AcGeCircArc3d {
public:
    /// The unit circle of the XY plane.
    AcGeCircArc3d() : AcGeCircArc3d{AcGePoint3d::kOrigin, AcGeVector3d::kZAxis, 1} {}
    /// A full circle. Its reference direction is the X axis of the object coordinate system that belongs to
    /// the normal.
    AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
    /// From one angle on to another; angles that are equal, whole turns aside, give a full circle. `refVec`
    /// may have a part along the normal, which is left out. A zero normal counts as +Z, a reference along the
    /// normal as none given, a negative radius as positive.
    AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& refVec,
                  double radius, double startAng, double endAng);

    AcGePoint3d center() const { return center_; }
    double radius() const { return radius_; }
    /// Unit vector.
    AcGeVector3d normal() const { return xAxis_.crossProduct(yAxis_); }
    /// Unit vector at right angles to the normal.
    AcGeVector3d refVec() const { return xAxis_; }
    /// As given.
    double startAng() const { return startAngle_; }
    /// Above the start angle, by a full turn at most.
    double endAng() const { return startAngle_ + sweep_; }
    AcGePoint3d startPoint() const { return at(startAngle_); }
    AcGePoint3d endPoint() const { return at(endAng()); }

    /// The nearest point of the arc; its start for a point on the axis of a full circle.
    AcGePoint3d closestPointTo(const AcGePoint3d& point) const;
    double distanceTo(const AcGePoint3d& point) const { return closestPointTo(point).distanceTo(point); }
    /// True when the arc is at most the point tolerance away, also just past an end.
    bool isOn(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(point) <= tol.equalPoint();
    }

private:
    AcGePoint3d at(double angle) const {
        return center_ + (xAxis_ * std::cos(angle) + yAxis_ * std::sin(angle)) * radius_;
    }

    AcGePoint3d center_;
    AcGeVector3d xAxis_, yAxis_;
    double radius_, startAngle_, sweep_;
};
