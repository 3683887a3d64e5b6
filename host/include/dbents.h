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

#include "qxvertices.h"
