// Multiline text. Points and vectors are in world coordinates, lengths in drawing units, angles in radians.
#pragma once

#include "dbmain.h"
#include "gept3dar.h"

#include <memory>
#include <string_view>

namespace qx::text {
struct MultilineText;
}

/// Text of several lines in a plane, hung from a point of its box. The lines follow from the text and its
/// codes and from the host's own stroke widths, which are the same on every machine; the sizes that a file
/// states are not used. They are laid out when they are first asked for and whenever height or width were
/// changed. Heights that the codes name in drawing units don't change when the text is scaled.
class QX_HOST_API AcDbMText : public qx::db::Described<AcDbMText, AcDbEntity> {
public:
    ACRX_DECLARE_MEMBERS(AcDbMText)
    static constexpr bool standsAlone = false;
    AcDbMText();
    ~AcDbMText() override;
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    /// One box around all that is drawn, turned with the text.
    void outline(qx::shape::Sink& sink) const override;
    bool isMeasurable() const override { return true; }
    bool afterReading(const qx::db::Drawing& drawing) override;

    enum AttachmentPoint {
        kTopLeft = 1,
        kTopCenter = 2,
        kTopRight = 3,
        kMiddleLeft = 4,
        kMiddleCenter = 5,
        kMiddleRight = 6,
        kBottomLeft = 7,
        kBottomCenter = 8,
        kBottomRight = 9
    };

    /// Where the attachment point lies.
    AcGePoint3d location() const { return data_.location; }
    AttachmentPoint attachment() const;
    AcGeVector3d normal() const { return data_.normal; }
    /// Of the lines, a unit vector in the plane of the text: as the file says by a vector or by an angle, of
    /// which the later one counts; without either, the world's x axis. For a vector along the normal, the x
    /// axis of the object coordinate system.
    AcGeVector3d direction() const;
    /// The same as an angle about the normal from that axis, 0 to 2 pi.
    double rotation() const;
    /// At which lines are broken; 0: nowhere.
    double width() const { return data_.width; }
    /// Of capitals, where no code says otherwise.
    double textHeight() const { return data_.textHeight; }
    /// Of the frame, nearly always 0: not that of the characters.
    double height() const { return data_.frameHeight; }

    // The box of the lines: from the top of the first line's capitals to the last baseline, as wide as the
    // longest line. Of text that shows nothing it is the location.

    double actualHeight() const;
    double actualWidth() const;
    /// Its corners, turned with the text: top left, top right, bottom left, bottom right. Replaces what is in
    /// the array.
    void getBoundingPoints(AcGePoint3dArray& corners) const;

    struct Data {
        qx::db::EntityProperties entity;
        AcGePoint3d location;
        AcGeVector3d direction{1, 0, 0};
        AcGeVector3d normal{0, 0, 1};
        double rotationDegrees = 0;
        double textHeight = 0, width = 0, frameHeight = 0, lineSpacing = 1;
        Adesk::Int32 attachment = kTopLeft;
        Adesk::Int32 lineSpacingStyle = 1; ///< 2: exactly
        std::string_view text;             ///< the last of its parts
        std::string_view styleName;
        double widthFactor = 1, obliqueDegrees = 0; ///< of the style
        // Which of the two ways to say where the lines run the text goes by, and which of them turn with it.
        Adesk::Int32 isByAngle = 0, turnsAngle = 0, turnsDirection = 1;
    };

private:
    template <class, class> friend class qx::db::Described;
    struct Layout;
    struct Axes;
    const qx::text::MultilineText& lines() const;
    Axes axes() const;
    void draw(qx::shape::Sink& sink, const AcGePoint3d& location, const Axes& axes) const;
    Data data_;
    mutable std::unique_ptr<Layout> layout_;
};
