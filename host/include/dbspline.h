// Splines: B-splines with knots, control points and, when rational, weights; or, without control points, the
// curve through the fit points. Points are in world coordinates.
#pragma once

#include "dbcurve.h"
#include "qxgroups.h"

/// The counts that a file gives are not looked at. A spline is drawn by its control points when it has any,
/// over the parameters for which it is defined; they and the knots of a closed one repeat what has to be
/// repeated. Without control points it is the cubic curve through the fit points whose parameter grows with
/// the chords and whose curvature is continuous, with the tangents that are given, else without curvature at
/// the ends; a closed one goes on smoothly from the last point to the first.
///
/// Knots, weights and points that don't make a curve, or a degree above 25, are a finding: the object is kept
/// and can't be used.
class QX_HOST_API AcDbSpline : public qx::db::Described<AcDbSpline, AcDbCurve> {
public:
    ACRX_DECLARE_MEMBERS(AcDbSpline)
    static constexpr bool standsAlone = false;
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    bool isMeasurable() const override { return true; }
    bool afterReading(const qx::db::Drawing& drawing) override;

    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    /// As the file says.
    bool isClosed() const override { return data_.flags & 1; }

    int degree() const { return data_.degree; }
    int numControlPoints() const;
    int numFitPoints() const;

    struct Data {
        qx::db::EntityProperties entity;
        AcGeVector3d normal{0, 0, 1};
        AcGeVector3d startTangent, endTangent; ///< zero: none
        Adesk::Int32 flags = 0;                ///< 1: closed, 2: periodic, 4: rational, 8: planar
        Adesk::Int32 degree = 3;
        qx::db::GroupList groups; ///< knots, weights, control points, fit points
    };

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
};
