// The simple entities. Points are in world coordinates unless a comment says otherwise, lengths in drawing
// units, angles in radians. An entity with a normal lives in the object coordinate system of that normal; its
// thickness, which runs along the normal, is kept and moves along, but is not drawn.
#pragma once

#include "dbcurve.h"
#include "dbidar.h"
#include "qxtextextent.h"

#include <algorithm>
#include <string>
#include <string_view>

class QX_HOST_API AcDbLine : public qx::db::Described<AcDbLine, AcDbCurve> {
public:
    ACRX_DECLARE_MEMBERS(AcDbLine)
    AcDbLine() = default;
    AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end);
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    bool isMeasurable() const override { return true; }
    bool isSimpleCurve() const override { return true; }
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;

    AcGePoint3d startPoint() const { return data_.start; }
    AcGePoint3d endPoint() const { return data_.end; }

    struct Data {
        qx::db::EntityProperties entity;
        double thickness = 0;
        AcGePoint3d start, end;
        AcGeVector3d normal{0, 0, 1};
    };

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
};

class QX_HOST_API AcDbPoint : public qx::db::Described<AcDbPoint, AcDbEntity> {
public:
    ACRX_DECLARE_MEMBERS(AcDbPoint)
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    bool isMeasurable() const override { return true; }

    AcGePoint3d position() const { return data_.position; }

    struct Data {
        qx::db::EntityProperties entity;
        double thickness = 0;
        AcGePoint3d position;
        AcGeVector3d normal{0, 0, 1};
        double angleDegrees = 0;
    };

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
};

class QX_HOST_API AcDbCircle : public qx::db::Described<AcDbCircle, AcDbCurve> {
public:
    ACRX_DECLARE_MEMBERS(AcDbCircle)
    AcDbCircle() = default;
    AcDbCircle(const AcGePoint3d& centre, const AcGeVector3d& normal, double radius);
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    bool isMeasurable() const override { return true; }
    bool isSimpleCurve() const override { return true; }
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    bool isClosed() const override { return true; }

    AcGePoint3d center() const;
    double radius() const { return data_.radius; }
    AcGeVector3d normal() const { return data_.normal; }

    struct Data {
        qx::db::EntityProperties entity;
        double thickness = 0;
        AcGePoint3d centre; ///< object coordinates
        double radius = 0;
        AcGeVector3d normal{0, 0, 1};
    };

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
};

/// Runs counter-clockwise about its normal from the start to the end angle.
class QX_HOST_API AcDbArc : public qx::db::Described<AcDbArc, AcDbCurve> {
public:
    ACRX_DECLARE_MEMBERS(AcDbArc)
    AcDbArc() = default;
    AcDbArc(const AcGePoint3d& centre, double radius, double startAngle, double endAngle);
    AcDbArc(const AcGePoint3d& centre, const AcGeVector3d& normal, double radius, double startAngle,
            double endAngle);
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    bool isMeasurable() const override { return true; }
    bool isSimpleCurve() const override { return true; }
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;

    AcGePoint3d center() const;
    double radius() const { return data_.radius; }
    AcGeVector3d normal() const { return data_.normal; }
    /// 0 to 2 pi, in the object coordinate system.
    double startAngle() const;
    double endAngle() const;

    struct Data {
        qx::db::EntityProperties entity;
        double thickness = 0;
        AcGePoint3d centre; ///< object coordinates
        double radius = 0;
        AcGeVector3d normal{0, 0, 1};
        double startDegrees = 0, endDegrees = 0;
    };

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
};

/// What filled areas with three or four straight edges have in common: their corners go in the order 1, 2, 4,
/// 3 around, and one that the file leaves out at the end is the third once more. The outline is drawn.
class QX_HOST_API AcDbFilledArea : public AcDbEntity {
public:
    struct Data {
        qx::db::EntityProperties entity;
        double thickness = 0;
        AcGePoint3d corners[4]; ///< object coordinates
        AcGeVector3d normal{0, 0, 1};
        Adesk::Int32 hasFourth = 1;
    };
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    bool isMeasurable() const override { return true; }
    bool afterReading(const qx::db::Drawing& drawing) override;

    /// World coordinates; eInvalidIndex from 4 on.
    Acad::ErrorStatus getPointAt(Adesk::UInt16 index, AcGePoint3d& point) const;
    AcGeVector3d normal() const { return data_.normal; }

protected:
    template <class, class> friend class qx::db::Described;
    Data data_;
};

class QX_HOST_API AcDbSolid : public qx::db::Described<AcDbSolid, AcDbFilledArea> {
public:
    ACRX_DECLARE_MEMBERS(AcDbSolid)
};

class QX_HOST_API AcDbTrace : public qx::db::Described<AcDbTrace, AcDbFilledArea> {
public:
    ACRX_DECLARE_MEMBERS(AcDbTrace)
};

/// Three or four corners anywhere in space; a fourth one that the file leaves out is the third once more.
/// Edges that the file hides are part of it, but of no picture.
class QX_HOST_API AcDbFace : public qx::db::Described<AcDbFace, AcDbEntity> {
public:
    ACRX_DECLARE_MEMBERS(AcDbFace)
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    bool isMeasurable() const override { return true; }
    bool afterReading(const qx::db::Drawing& drawing) override;

    /// eInvalidIndex from 4 on.
    Acad::ErrorStatus getVertexAt(Adesk::UInt16 index, AcGePoint3d& point) const;
    /// Of the edge that begins at that corner.
    Acad::ErrorStatus isEdgeVisibleAt(Adesk::UInt16 index, Adesk::Boolean& isVisible) const;

    struct Data {
        qx::db::EntityProperties entity;
        AcGePoint3d corners[4];
        Adesk::Int32 hiddenEdges = 0; ///< a bit for each
        Adesk::Int32 hasFourth = 1;
    };

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
};

namespace AcDb {
enum TextHorzMode {
    kTextLeft = 0,
    kTextCenter = 1,
    kTextRight = 2,
    kTextAlign = 3,
    kTextMid = 4,
    kTextFit = 5
};
enum TextVertMode { kTextBase = 0, kTextBottom = 1, kTextVertMid = 2, kTextTop = 3 };
} // namespace AcDb

/// A line of text. Its box follows from the host's own stroke widths, which are the same on every machine.
class QX_HOST_API AcDbText : public qx::db::Described<AcDbText, AcDbEntity> {
public:
    ACRX_DECLARE_MEMBERS(AcDbText)
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    bool isMeasurable() const override { return true; }
    bool afterReading(const qx::db::Drawing& drawing) override;

    /// Left end of the baseline, for justified text derived from its alignment point.
    AcGePoint3d position() const;
    AcGePoint3d alignmentPoint() const;
    double height() const { return data_.height; }
    double rotation() const;
    double widthFactor() const { return data_.widthFactor; }
    double oblique() const;
    AcGeVector3d normal() const { return data_.normal; }
    AcDb::TextHorzMode horizontalMode() const;
    AcDb::TextVertMode verticalMode() const;

    struct Data {
        qx::db::EntityProperties entity;
        double thickness = 0;
        AcGePoint3d position, alignment; ///< object coordinates
        double height = 0;
        AcGeVector3d normal{0, 0, 1};
        double rotationDegrees = 0, widthFactor = 1, obliqueDegrees = 0;
        Adesk::Int32 horizontalMode = 0, verticalMode = 0;
        Adesk::Int32 generation = 0;     ///< 2: mirrored in x, 4: mirrored in y
        Adesk::Int32 attributeFlags = 0; ///< of attributes; 1: invisible, 2: constant
        std::string_view text;           ///< in the drawing's encoding
        std::string_view tag;            ///< of an attribute's definition
    };

protected:
    template <class, class> friend class qx::db::Described;
    struct Placement; ///< where the left end of the baseline is, and how the glyphs stand on it
    Placement placement(const qx::text::TextExtent& extent) const;
    void draw(qx::shape::Sink& sink, std::string_view text, const qx::text::TextExtent& extent) const;
    Data data_;
    /// What was found out once about the text.
    struct Shown {
        qx::text::TextExtent extent;
        const void* encoding = nullptr;
    } shown_;
};

/// Text that belongs to a block reference.
class QX_HOST_API AcDbAttribute : public qx::db::Described<AcDbAttribute, AcDbText> {
public:
    ACRX_DECLARE_MEMBERS(AcDbAttribute)
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
};

/// What attributes of a block are made from: shows its tag. References to its block show it no more, unless
/// its text is the same for all of them.
class QX_HOST_API AcDbAttributeDefinition : public qx::db::Described<AcDbAttributeDefinition, AcDbText> {
public:
    ACRX_DECLARE_MEMBERS(AcDbAttributeDefinition)
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    void shapeInReference(qx::shape::Sink& sink) const override;
    bool afterReading(const qx::db::Drawing& drawing) override;

    bool isInvisible() const { return data_.attributeFlags & 1; }
    bool isConstant() const { return data_.attributeFlags & 2; }

private:
    qx::text::TextExtent constantExtent_;
};

class AcDbObjectIterator;

class QX_HOST_API AcDbBlockReference : public qx::db::Described<AcDbBlockReference, AcDbEntity> {
public:
    static constexpr bool standsAlone = false;
    ACRX_DECLARE_MEMBERS(AcDbBlockReference)
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    /// Host side: what it shows without its attributes.
    void blockShape(qx::shape::Sink& sink) const;
    bool isMeasurable() const override { return true; }
    bool afterReading(const qx::db::Drawing& drawing) override;

    AcGePoint3d position() const;
    /// About the normal, 0 to 2 pi.
    double rotation() const;
    AcGeVector3d normal() const { return data_.normal; }
    /// From the definition's coordinates to world coordinates.
    AcGeMatrix3d blockTransform() const;
    /// Null when the drawing has no such block.
    AcDbObjectId blockTableRecord() const;
    /// The caller deletes it.
    AcDbObjectIterator* attributeIterator() const;

    struct Data {
        qx::db::EntityProperties entity;
        AcGePoint3d position; ///< object coordinates
        AcGeVector3d normal{0, 0, 1};
        double xScale = 1, yScale = 1, zScale = 1, rotationDegrees = 0;
        Adesk::Int32 columns = 1, rows = 1;
        double columnSpacing = 0, rowSpacing = 0; ///< not scaled with the block
        std::string_view name;
    };

protected:
    template <class, class> friend class qx::db::Described;
    Data data_;
    qx::db::BlockDefinition* definition_ = nullptr;
};

/// A block in rows and columns, which run along the axes of the turned insertion. Each cell shows all of it,
/// attributes included. An array of more than can be drawn shows its corner cells, and lines between them.
class QX_HOST_API AcDbMInsertBlock : public qx::db::Described<AcDbMInsertBlock, AcDbBlockReference> {
public:
    ACRX_DECLARE_MEMBERS(AcDbMInsertBlock)
    static constexpr int mostInLine = 32767;
    void shape(qx::shape::Sink& sink) const override;
    void extremes(qx::shape::Sink& sink) const override;

    Adesk::UInt16 columns() const;
    Adesk::UInt16 rows() const;
    double columnSpacing() const { return data_.columnSpacing; }
    double rowSpacing() const { return data_.rowSpacing; }

    // Host side.

    std::size_t cellCount() const { return std::size_t{columns()} * rows(); }
    /// From the first cell to another one.
    AcGeVector3d offsetOf(int column, int row) const;
    /// Calls `visit` with the offset of each of the cells that reach farthest.
    template <class Visit> void forEachCornerCell(Visit&& visit) const {
        for (int row = 0; row < rows(); row += std::max(1, rows() - 1))
            for (int column = 0; column < columns(); column += std::max(1, columns() - 1))
                visit(offsetOf(column, row));
    }

private:
    void drawCell(qx::shape::Sink& sink, const AcGeVector3d& offset) const;
    void drawCorners(qx::shape::Sink& sink) const;
};

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

class QX_HOST_API AcDb3dPolylineVertex : public qx::db::Described<AcDb3dPolylineVertex, AcDbVertex> {
public:
    ACRX_DECLARE_MEMBERS(AcDb3dPolylineVertex)
    static const qx::db::FieldTable& table();

    AcGePoint3d position() const { return data_.position; }
    AcDb::Vertex3dType vertexType() const;

    struct Data {
        qx::db::EntityProperties entity;
        AcGePoint3d position;
        Adesk::Int32 flags = 0; ///< as of AcDb2dVertex
    };

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
};

/// What polylines with vertices of their own have in common. transformBy() moves the vertices along, and
/// answers eSubentitiesStillOpen while one of them is open for writing.
class QX_HOST_API AcDbVertexPolyline : public AcDbCurve {
public:
    static constexpr bool standsAlone = false;
    /// Of all vertices, those that only control a fitted curve included. The caller deletes it.
    AcDbObjectIterator* vertexIterator() const;
    bool isMeasurable() const override { return true; }
    /// Not when one of the vertices can't be used.
    bool afterReading(const qx::db::Drawing& drawing) override;

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

/// What meshes have in common. As AcDbVertexPolyline, but no curve.
class QX_HOST_API AcDbVertexMesh : public AcDbEntity {
public:
    static constexpr bool standsAlone = false;
    /// Of all vertices and face records. The caller deletes it.
    AcDbObjectIterator* vertexIterator() const;
    bool isMeasurable() const override { return true; }
    /// Not when one of the vertices can't be used.
    bool afterReading(const qx::db::Drawing& drawing) override;

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

/// A vertex of a mesh, in world coordinates.
class QX_HOST_API AcDbPolygonMeshVertex : public qx::db::Described<AcDbPolygonMeshVertex, AcDbVertex> {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolygonMeshVertex)
    static const qx::db::FieldTable& table();
    AcGePoint3d position() const { return data_.position; }
    AcDb::Vertex3dType vertexType() const;

    struct Data {
        qx::db::EntityProperties entity;
        AcGePoint3d position;
        Adesk::Int32 flags = 0; ///< 8: on the smoothed surface, 16: controls it
    };

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
};

class QX_HOST_API AcDbPolyFaceMeshVertex : public qx::db::Described<AcDbPolyFaceMeshVertex, AcDbVertex> {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolyFaceMeshVertex)
    static const qx::db::FieldTable& table();
    AcGePoint3d position() const { return data_.position; }

    using Data = AcDbPolygonMeshVertex::Data;

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
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
