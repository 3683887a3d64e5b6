// Ellipses and parts of them. Points and vectors are in world coordinates, angles in radians.
#pragma once

#include "dbcurve.h"

namespace qx::shape {
struct EllipticArc;
}

/// The curve center() + majorAxis() cos p + minorAxis() sin p, from one parameter p to another; the minor
/// axis is a quarter turn about the normal from the major one. What a file says is drawn as it stands: with a
/// ratio of 1 a circle, above 1 an ellipse whose minor axis is the longer one, with a ratio of 0 or a major
/// axis along the normal a line there and back, without a major axis a point.
class QX_HOST_API AcDbEllipse : public qx::db::Described<AcDbEllipse, AcDbCurve> {
public:
    ACRX_DECLARE_MEMBERS(AcDbEllipse)
    AcDbEllipse() = default;
    /// Equal angles, whole turns aside, are the whole ellipse.
    AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& unitNormal, const AcGeVector3d& majorAxis,
                double radiusRatio, double startAngle = 0, double endAngle = 6.28318530717958647692);
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    bool isMeasurable() const override { return true; }

    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    bool isClosed() const override;

    AcGePoint3d center() const { return data_.centre; }
    /// From the centre to an end: half of the long axis.
    AcGeVector3d majorAxis() const { return data_.majorAxis; }
    AcGeVector3d minorAxis() const;
    double majorRadius() const { return data_.majorAxis.length(); }
    double minorRadius() const;
    double radiusRatio() const { return data_.ratio; }
    AcGeVector3d normal() const { return data_.normal; }
    /// As seen from the centre, from the major axis: not the curve's parameters, but at whole quarters the
    /// same. In the turn in which the file has the parameter.
    double startAngle() const;
    double endAngle() const;

    struct Data {
        qx::db::EntityProperties entity;
        AcGePoint3d centre;
        AcGeVector3d majorAxis;
        AcGeVector3d normal{0, 0, 1};
        double ratio = 1;
        double startParameter = 0, endParameter = 6.28318530717958647692;
    };

private:
    template <class, class> friend class qx::db::Described;
    qx::shape::EllipticArc arc() const;
    Data data_;
};
