// Lightweight polylines: straight and arc segments in one plane, in one object.
#pragma once

#include "dbcurve.h"
#include "gepnt2d.h"

#include <vector>

class QX_HOST_API AcDbPolyline : public qx::db::Described<AcDbPolyline, AcDbCurve> {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolyline)
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    bool isMeasurable() const override { return true; }

    unsigned numVerts() const { return static_cast<unsigned>(data_.vertices.size()); }
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    bool isClosed() const override;
    AcGeVector3d normal() const { return data_.normal; }
    double elevation() const { return data_.elevation; }
    /// World coordinates; eInvalidIndex.
    Acad::ErrorStatus getPointAt(unsigned index, AcGePoint3d& point) const;
    /// Object coordinates; eInvalidIndex.
    Acad::ErrorStatus getPointAt(unsigned index, AcGePoint2d& point) const;
    /// Tangent of a quarter of the included angle of the segment that follows the vertex, negative when it
    /// runs clockwise; eInvalidIndex.
    Acad::ErrorStatus getBulgeAt(unsigned index, double& bulge) const;

    /// In object coordinates, at the polyline's elevation.
    struct Vertex {
        double x = 0, y = 0, bulge = 0;
    };
    /// At the vertex and at the end of the segment that follows it.
    struct Widths {
        double start = 0, end = 0;
    };
    struct Data {
        qx::db::EntityProperties entity;
        double elevation = 0, constantWidth = 0;
        AcGeVector3d normal{0, 0, 1};
        Adesk::Int32 flags = 0; ///< 1: closed
        std::vector<Vertex> vertices;
        std::vector<Widths> widths; ///< up to the last vertex that has any
    };

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
};
