// The simple entities. Points are in world coordinates unless a comment says otherwise, lengths in drawing
// units, angles in radians. An entity with a normal lives in the object coordinate system of that normal.
#pragma once

#include "dbcurve.h"
#include "dbidar.h"
#include "qxtextextent.h"

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

    AcGePoint3d startPoint() const { return data_.start; }
    AcGePoint3d endPoint() const { return data_.end; }

    struct Data {
        qx::db::EntityProperties entity;
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

    AcGePoint3d center() const;
    double radius() const { return data_.radius; }
    AcGeVector3d normal() const { return data_.normal; }

    struct Data {
        qx::db::EntityProperties entity;
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

    AcGePoint3d center() const;
    double radius() const { return data_.radius; }
    AcGeVector3d normal() const { return data_.normal; }
    /// 0 to 2 pi, in the object coordinate system.
    double startAngle() const;
    double endAngle() const;

    struct Data {
        qx::db::EntityProperties entity;
        AcGePoint3d centre; ///< object coordinates
        double radius = 0;
        AcGeVector3d normal{0, 0, 1};
        double startDegrees = 0, endDegrees = 0;
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
        AcGePoint3d position, alignment; ///< object coordinates
        double height = 0;
        AcGeVector3d normal{0, 0, 1};
        double rotationDegrees = 0, widthFactor = 1, obliqueDegrees = 0;
        Adesk::Int32 horizontalMode = 0, verticalMode = 0;
        Adesk::Int32 generation = 0;     ///< 2: mirrored in x, 4: mirrored in y
        Adesk::Int32 attributeFlags = 0; ///< of an attribute; 1: invisible
        std::string_view text;           ///< in the drawing's encoding
    };

protected:
    template <class, class> friend class qx::db::Described;
    struct Placement; ///< where the left end of the baseline is, and how the glyphs stand on it
    Placement placement() const;
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

class QX_HOST_API AcDbBlockReference : public qx::db::Described<AcDbBlockReference, AcDbEntity> {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockReference)
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    /// Host side: what it shows without its attributes.
    void blockShape(qx::shape::Sink& sink) const;
    /// Not for arrays of insertions.
    bool isMeasurable() const override;
    bool afterReading(const qx::db::Drawing& drawing) override;
    /// The attributes move along.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    std::unique_ptr<AcDbEntity> copied() const override { return nullptr; }

    AcGePoint3d position() const;
    /// About the normal, 0 to 2 pi.
    double rotation() const;
    AcGeVector3d normal() const { return data_.normal; }
    /// From the definition's coordinates to world coordinates.
    AcGeMatrix3d blockTransform() const;
    /// Null when the drawing has no such block.
    AcDbObjectId blockTableRecord() const;

    struct Data {
        qx::db::EntityProperties entity;
        AcGePoint3d position; ///< object coordinates
        AcGeVector3d normal{0, 0, 1};
        double xScale = 1, yScale = 1, zScale = 1, rotationDegrees = 0;
        Adesk::Int32 columns = 1, rows = 1;
        std::string_view name;
    };

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
    qx::db::BlockDefinition* definition_ = nullptr;
};

/// Polylines whose vertices are objects of their own. They are carried along as they are.
class QX_HOST_API AcDb2dPolyline : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDb2dPolyline)
};
class QX_HOST_API AcDb3dPolyline : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDb3dPolyline)
};
