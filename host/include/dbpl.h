// Lightweight polylines: straight and arc segments in one plane, in one object.
#pragma once

#include "dbcurve.h"
#include "gearc2d.h"
#include "gearc3d.h"
#include "gelnsg2d.h"
#include "gelnsg3d.h"
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

    /// At the vertex and at the end of the segment that follows it; eInvalidIndex.
    Acad::ErrorStatus getWidthsAt(unsigned index, double& startWidth, double& endWidth) const;

    enum SegType {
        kLine = 0,
        kArc = 1,
        kCoincident = 2, ///< between two equal vertices
        kPoint = 3,      ///< none: the vertex is the only one, or the last of an open polyline
        kEmpty = 4       ///< there is no such vertex
    };
    /// Of the segment that follows the vertex.
    SegType segType(unsigned index) const;
    /// The segment that follows the vertex, in world or object coordinates. It keeps its value when the
    /// status is not eOk: eInvalidIndex when there is no such vertex, eNotApplicable when segType() is
    /// another.
    Acad::ErrorStatus getLineSegAt(unsigned index, AcGeLineSeg3d& segment) const;
    Acad::ErrorStatus getLineSegAt(unsigned index, AcGeLineSeg2d& segment) const;
    /// The same for arcs. One in space runs from the segment's start to its end, counter-clockwise about its
    /// own normal, which is the polyline's or its opposite.
    Acad::ErrorStatus getArcSegAt(unsigned index, AcGeCircArc3d& arc) const;
    Acad::ErrorStatus getArcSegAt(unsigned index, AcGeCircArc2d& arc) const;

    /// Only while the polyline is in no drawing, else eNotApplicable. The new vertex, in object coordinates,
    /// gets this index; eInvalidIndex beyond numVerts().
    Acad::ErrorStatus addVertexAt(unsigned index, const AcGePoint2d& point, double bulge = 0,
                                  double startWidth = 0, double endWidth = 0);
    void setClosed(Adesk::Boolean closed);
    /// Makes this polyline, which is in no drawing, a copy of an AcDb2dPolyline, which has to be open for
    /// reading and stays as it is; a vertex without widths takes those of its polyline. eNullEntityPointer,
    /// eIllegalEntityType for another class, eNotApplicable for a fitted polyline or when this one is in a
    /// drawing; to take over the id is eNotImplementedYet.
    Acad::ErrorStatus convertFrom(AcDbEntity*& entity, Adesk::Boolean transferId = true);

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
        double thickness = 0, elevation = 0, constantWidth = 0;
        AcGeVector3d normal{0, 0, 1};
        Adesk::Int32 flags = 0; ///< 1: closed, 128: its line type runs on through the vertices
        std::vector<Vertex> vertices;
        std::vector<Widths> widths; ///< up to the last vertex that has any
    };

private:
    template <class, class> friend class qx::db::Described;
    AcGePoint2d pointAt(unsigned index) const { return {data_.vertices[index].x, data_.vertices[index].y}; }
    unsigned following(unsigned index) const { return index + 1 < numVerts() ? index + 1 : 0; }
    /// eOk when the segment is of that type.
    Acad::ErrorStatus expect(SegType type, unsigned index) const;
    Data data_;
};
