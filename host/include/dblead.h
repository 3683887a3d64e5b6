// Leaders: the lines that lead from an annotation to what it is about. Points are in world coordinates.
#pragma once

#include "dbcurve.h"
#include "qxgroups.h"

/// Looks like its path, without arrowhead and hook line: straight from vertex to vertex, or the spline
/// through the vertices that AcDbSpline describes for fit points. The annotation it belongs to stays as it
/// is, and so does its size.
class QX_HOST_API AcDbLeader : public qx::db::Described<AcDbLeader, AcDbCurve> {
public:
    ACRX_DECLARE_MEMBERS(AcDbLeader)
    static constexpr bool standsAlone = false;
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    bool isMeasurable() const override { return true; }
    bool afterReading(const qx::db::Drawing& drawing) override;

    /// Where the arrowhead is.
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;

    bool isSplined() const { return data_.pathType == 1; }
    int numVertices() const;
    /// The origin when there is no such vertex.
    AcGePoint3d vertexAt(int index) const;

    struct Data {
        qx::db::EntityProperties entity;
        AcGeVector3d normal{0, 0, 1};
        AcGeVector3d horizontal{1, 0, 0};           ///< of the annotation
        AcGeVector3d blockOffset, annotationOffset; ///< from the last vertex
        Adesk::Int32 pathType = 0;                  ///< 1: a spline
        qx::db::GroupList groups;                   ///< the vertices
    };

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
};
