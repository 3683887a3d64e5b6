// Polylines and meshes whose vertices are objects of their own, and the vertices: a part of dbents.h, which
// is the header to include.
#pragma once

#include "dbcurve.h"

/// Walks the parts of an entity in their order: vertices of a polyline, attributes of a block reference.
/// Parts that are erased when the walk comes to them are passed over. The caller deletes it; the entity may
/// be closed before.
class QX_HOST_API AcDbObjectIterator {
public:
    explicit AcDbObjectIterator(const qx::db::Record* header);
    bool done() const { return !part_; }
    void step();
    AcDbObjectId objectId() const { return AcDbObjectId{part_}; }

private:
    const qx::db::Record* header_;
    qx::db::Record* part_;
};

/// A vertex is opened like any other object, under the lock of its polyline's layer. It moves with the
/// polyline only: transformBy() answers eMustOpenThruOwner.
class QX_HOST_API AcDbVertex : public AcDbEntity {
public:
    static constexpr bool standsAlone = false;
    ACRX_DECLARE_MEMBERS(AcDbVertex)
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
};

namespace AcDb {
enum Vertex2dType { k2dVertex = 0, k2dSplineCtlVertex = 1, k2dSplineFitVertex = 2, k2dCurveFitVertex = 3 };
enum Poly2dType { k2dSimplePoly = 0, k2dFitCurvePoly = 1, k2dQuadSplinePoly = 2, k2dCubicSplinePoly = 3 };
enum Vertex3dType { k3dSimpleVertex = 0, k3dControlVertex = 1, k3dFitVertex = 2 };
enum Poly3dType { k3dSimplePoly = 0, k3dQuadSplinePoly = 1, k3dCubicSplinePoly = 2 };
} // namespace AcDb

class QX_HOST_API AcDb2dVertex : public qx::db::Described<AcDb2dVertex, AcDbVertex> {
public:
    ACRX_DECLARE_MEMBERS(AcDb2dVertex)
    static const qx::db::FieldTable& table();

    /// Object coordinates as the file has them; the height that counts is the polyline's.
    AcGePoint3d position() const { return data_.position; }
    /// As of AcDbPolyline::getBulgeAt().
    double bulge() const { return data_.bulge; }
    double startWidth() const { return data_.startWidth; }
    double endWidth() const { return data_.endWidth; }
    AcDb::Vertex2dType vertexType() const;

    struct Data {
        qx::db::EntityProperties entity;
        AcGePoint3d position;
        double startWidth = 0, endWidth = 0, bulge = 0, tangentDegrees = 0;
        Adesk::Int32 flags = 0; ///< 1: added by fitting, 2: has a tangent, 8: on a spline, 16: controls one
    };

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
};

namespace qx::db {
/// A vertex by its place in the world.
struct SpatialVertexData {
    EntityProperties entity;
    AcGePoint3d position;
    Adesk::Int32 flags = 0; ///< 8: on a spline or a smoothed surface, 16: controls one
};
QX_HOST_API const FieldTable& spatialVertexTable();

template <class Self> class SpatialVertex : public Described<Self, AcDbVertex> {
public:
    using Data = SpatialVertexData;
    static const FieldTable& table() { return spatialVertexTable(); }
    AcGePoint3d position() const { return data_.position; }
    AcDb::Vertex3dType vertexType() const {
        if (data_.flags & 16) return AcDb::k3dControlVertex;
        return data_.flags & 8 ? AcDb::k3dFitVertex : AcDb::k3dSimpleVertex;
    }

protected:
    template <class, class> friend class Described;
    Data data_;
};

/// False when one of the parts can't be read.
QX_HOST_API bool arePartsUsable(const Drawing& drawing, const Record* header);

/// An entity that consists of its vertices. transformBy() moves them along, and answers eSubentitiesStillOpen
/// while one of them is open for writing.
template <class Base> class WithVertices : public Base {
public:
    static constexpr bool standsAlone = false;
    /// Of all vertices, those that only control a fitted curve and the faces of a mesh included. The caller
    /// deletes it.
    AcDbObjectIterator* vertexIterator() const { return new AcDbObjectIterator{this->objectId().record()}; }
    bool isMeasurable() const override { return true; }
    /// Not when one of the vertices can't be used.
    bool afterReading(const Drawing& drawing) override {
        return arePartsUsable(drawing, this->objectId().record());
    }
};
} // namespace qx::db

class QX_HOST_API AcDb3dPolylineVertex : public qx::db::SpatialVertex<AcDb3dPolylineVertex> {
public:
    ACRX_DECLARE_MEMBERS(AcDb3dPolylineVertex)
};

/// What polylines with vertices of their own have in common.
class QX_HOST_API AcDbVertexPolyline : public qx::db::WithVertices<AcDbCurve> {
protected:
    template <class Vertex>
    Acad::ErrorStatus openAs(Vertex*& vertex, AcDbObjectId id, AcDb::OpenMode mode, bool openErased) const {
        vertex = nullptr;
        return isPart(id) ? acdbOpenObject(vertex, id, mode, openErased) : Acad::eInvalidInput;
    }
    bool isPart(AcDbObjectId id) const;
};

/// Straight and arc segments in one plane, as curve fitting and splines show them.
class QX_HOST_API AcDb2dPolyline : public qx::db::Described<AcDb2dPolyline, AcDbVertexPolyline> {
public:
    ACRX_DECLARE_MEMBERS(AcDb2dPolyline)
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    bool isClosed() const override { return data_.flags & 1; }

    AcDb::Poly2dType polyType() const;
    double elevation() const { return data_.elevation; }
    AcGeVector3d normal() const { return data_.normal; }
    /// World coordinates.
    AcGePoint3d vertexPosition(const AcDb2dVertex& vertex) const;
    /// As acdbOpenObject(); eInvalidInput for an id that is no part of this polyline.
    Acad::ErrorStatus openVertex(AcDb2dVertex*& vertex, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased = false) const {
        return openAs(vertex, id, mode, openErased);
    }

    struct Data {
        qx::db::EntityProperties entity;
        double thickness = 0;
        double x = 0, y = 0, elevation = 0; ///< the first two mean nothing
        double startWidth = 0, endWidth = 0;
        AcGeVector3d normal{0, 0, 1};
        Adesk::Int32 flags = 0;     ///< 1: closed, 2: curve-fit, 4: spline
        Adesk::Int32 curveType = 0; ///< 5: quadratic
    };

    /// Host side.
    const Data& data() const { return data_; }

private:
    template <class, class> friend class qx::db::Described;
    template <class Visit> void forEachShown(Visit&& visit) const;
    Data data_;
};

/// Straight segments anywhere in space.
class QX_HOST_API AcDb3dPolyline : public qx::db::Described<AcDb3dPolyline, AcDbVertexPolyline> {
public:
    ACRX_DECLARE_MEMBERS(AcDb3dPolyline)
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    bool isClosed() const override { return data_.flags & 1; }

    AcDb::Poly3dType polyType() const;
    Acad::ErrorStatus openVertex(AcDb3dPolylineVertex*& vertex, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased = false) const {
        return openAs(vertex, id, mode, openErased);
    }

    struct Data {
        qx::db::EntityProperties entity;
        double thickness = 0;
        Adesk::Int32 flags = 0; ///< as of AcDb2dPolyline
        Adesk::Int32 curveType = 0;
    };

private:
    template <class, class> friend class qx::db::Described;
    template <class Visit> void forEachShown(Visit&& visit) const;
    Data data_;
};

/// What meshes have in common.
class QX_HOST_API AcDbVertexMesh : public qx::db::WithVertices<AcDbEntity> {
public:
    struct Data {
        qx::db::EntityProperties entity;
        double thickness = 0;
        Adesk::Int32 flags = 0; ///< 1: closed in M, 32: closed in N, 4: smoothed
        Adesk::Int32 m = 0, n = 0, mDensity = 0, nDensity = 0;
    };
    static const qx::db::FieldTable& table();

protected:
    template <class, class> friend class qx::db::Described;
    Data data_;
};

class QX_HOST_API AcDbPolygonMeshVertex : public qx::db::SpatialVertex<AcDbPolygonMeshVertex> {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolygonMeshVertex)
};

class QX_HOST_API AcDbPolyFaceMeshVertex : public qx::db::SpatialVertex<AcDbPolyFaceMeshVertex> {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolyFaceMeshVertex)
};

/// One face: which vertices are its corners. It stays as it is when its mesh moves.
class QX_HOST_API AcDbFaceRecord : public qx::db::Described<AcDbFaceRecord, AcDbVertex> {
public:
    ACRX_DECLARE_MEMBERS(AcDbFaceRecord)
    static const qx::db::FieldTable& table();
    bool isMovedAlong() const override { return false; }
    /// From 1 on, negative where the edge that begins there is hidden, 0 for none; eInvalidIndex from 4 on.
    Acad::ErrorStatus getVertexAt(Adesk::UInt16 corner, Adesk::Int32& vertex) const;

    struct Data {
        qx::db::EntityProperties entity;
        Adesk::Int32 vertices[4] = {};
    };

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
};

/// Rows of vertices, joined along and across. Of a smoothed mesh the surface is drawn, not what controls it.
/// How long the rows are says the file; how many there are, the vertices.
class QX_HOST_API AcDbPolygonMesh : public qx::db::Described<AcDbPolygonMesh, AcDbVertexMesh> {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolygonMesh)
    void shape(qx::shape::Sink& sink) const override;
    bool isMClosed() const { return data_.flags & 1; }
    bool isNClosed() const { return data_.flags & 32; }

private:
    bool isSmoothed() const { return data_.flags & 4; }
    std::size_t rowLength() const;
};

/// Faces between vertices that stand before them. An index that leads to no vertex counts for nothing; edges
/// that the file hides are part of it, but of no picture.
class QX_HOST_API AcDbPolyFaceMesh : public qx::db::Described<AcDbPolyFaceMesh, AcDbVertexMesh> {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolyFaceMesh)
    void shape(qx::shape::Sink& sink) const override;
};
