#include "db/Drawing.h"
#include "db/FieldTable.h"
#include "db/GroupWalk.h"
#include "dbmtext.h"
#include "ge/OcsFrame.h"
#include "shape/ExtentsSink.h"
#include "text/multiline.h"
#include "text/shownText.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

using qx::db::FieldTable;
using qx::db::Role;
using qx::ge::OcsFrame;
using qx::text::longestShown;
using qx::text::MultilineRun;
using qx::text::MultilineText;

ACRX_DEFINE_MEMBERS(AcDbMText, AcDbEntity, L"MTEXT")

namespace {

constexpr double degree = std::numbers::pi / 180;

// In files since 2018 a text holds an object that says once more where it is and where its lines run, and how
// wide and how high its columns are.
constexpr qx::db::ListedGroup embeddedGroups[] = {
    {10, Role::vector}, {11, Role::worldPoint}, {40, Role::length}, {41, Role::length}, {42, Role::length},
    {43, Role::length}, {44, Role::length},     {45, Role::length}, {46, Role::length}};

using qx::db::GroupGrammar;

GroupGrammar::Groups tailGroups(GroupGrammar::Groups now, const qx::dxf::Tag& tag) {
    if (tag.code == qx::db::embeddedObject) return embeddedGroups;
    return tag.code >= 1000 ? qx::db::xdataGrammar.first : now;
}

constexpr GroupGrammar tailGrammar{{}, tailGroups};

/// As much as is shown. Long text is cut wherever a part is full, even within a character.
std::string joinedText(const qx::db::Drawing& drawing, const qx::db::Record* record) {
    std::string text;
    qx::db::FieldTags tags{drawing.bytesOf(record)};
    for (qx::dxf::Tag tag; text.size() <= longestShown && tags.next(tag);)
        if (tag.code == 1 || tag.code == 3) text += tag.value.substr(0, longestShown + 1 - text.size());
    if (text.size() <= longestShown) return text;
    drawing.addFinding(record, qx::db::longTextSentence);
    text.resize(longestShown);
    return text;
}

} // namespace

struct AcDbMText::Layout {
    qx::text::MultilineFormat format;
    MultilineText text;
};

/// Unit vectors along the lines and upwards.
struct AcDbMText::Axes {
    AcGeVector3d along, up;
};

AcDbMText::AcDbMText() = default;
AcDbMText::~AcDbMText() = default;

const FieldTable& AcDbMText::table() {
    static constexpr qx::db::Guard angle{offsetof(Data, turnsAngle), offsetof(Data, turnsAngle)};
    static constexpr qx::db::Guard direction{offsetof(Data, turnsDirection), offsetof(Data, turnsDirection)};
    static const FieldTable fields = [] {
        FieldTable made = FieldTable::ofEntity(
            sizeof(Data), {
                              {Role::subclass, 100, 0, 0, "AcDbMText"},
                              {Role::worldPoint, 10, offsetof(Data, location)},
                              {Role::length, 40, offsetof(Data, textHeight)},
                              {Role::length, 41, offsetof(Data, width)},
                              {Role::length, 46, offsetof(Data, frameHeight)},
                              {Role::integer, 71, offsetof(Data, attachment), kTopLeft},
                              {Role::text, 1, offsetof(Data, text)},
                              {Role::text, 7, offsetof(Data, styleName)},
                              {Role::normal, 210, offsetof(Data, normal)},
                              {Role::vector, 11, offsetof(Data, direction), 1, nullptr, &direction},
                              {Role::angleDegrees, 50, offsetof(Data, rotationDegrees), 0, nullptr, &angle},
                              {Role::integer, 73, offsetof(Data, lineSpacingStyle), 1},
                              {Role::plain, 44, offsetof(Data, lineSpacing), 1},
                          });
        made.tail = &tailGrammar;
        return made;
    }();
    return fields;
}

// An angle alone is all that turns; otherwise the direction turns, and an angle beside it too, so that they
// go on saying the same. Where neither is said the lines run along world x, and where that is along the
// normal, by an angle of 0.
bool AcDbMText::afterReading(const qx::db::Drawing& drawing) {
    const qx::db::TextStyle style = drawing.textStyle(data_.styleName);
    data_.widthFactor = style.widthFactor;
    data_.obliqueDegrees = style.obliqueDegrees;
    bool hasDirection = false, hasAngle = false;
    qx::db::FieldTags tags{drawing.bytesOf(objectId().record())};
    for (qx::dxf::Tag tag; tags.next(tag);) {
        if (tag.code != 11 && tag.code != 50) continue;
        data_.isByAngle = tag.code == 50;
        (tag.code == 50 ? hasAngle : hasDirection) = true;
    }
    const AcGeVector3d& given = data_.direction;
    hasDirection = hasDirection && (given.x != 0 || given.y != 0 || given.z != 0);
    data_.isByAngle = hasAngle && (data_.isByAngle || !hasDirection);
    if (!hasDirection && !hasAngle) data_.isByAngle = given.crossProduct(data_.normal).isZeroLength();
    data_.turnsAngle = hasAngle || data_.isByAngle;
    data_.turnsDirection = hasDirection || !data_.turnsAngle;
    return true;
}

AcDbMText::AttachmentPoint AcDbMText::attachment() const {
    return static_cast<AttachmentPoint>(std::clamp<Adesk::Int32>(data_.attachment, kTopLeft, kBottomRight));
}

AcDbMText::Axes AcDbMText::axes() const {
    constexpr double shortest = 1e-9; // of a unit vector's image in the plane
    const OcsFrame frame{data_.normal};
    AcGeVector3d along = frame.x;
    if (data_.isByAngle) {
        const double angle = data_.rotationDegrees * degree;
        along = frame.toWorld(AcGeVector3d{std::cos(angle), std::sin(angle), 0});
    } else {
        const AcGeVector3d given = OcsFrame{data_.direction}.z; // of unit length, whatever the file says
        const AcGeVector3d inPlane = given - frame.z * given.dotProduct(frame.z);
        if (inPlane.length() > shortest) along = inPlane / inPlane.length();
    }
    return {along, frame.z.crossProduct(along)};
}

AcGeVector3d AcDbMText::direction() const { return axes().along; }

double AcDbMText::rotation() const {
    const AcGeVector3d along = OcsFrame{data_.normal}.toOcs(axes().along);
    const double angle = std::atan2(along.y, along.x);
    return angle < 0 ? angle + 2 * std::numbers::pi : angle;
}

const MultilineText& AcDbMText::lines() const {
    constexpr int exactly = 2;
    const qx::text::MultilineFormat format{
        data_.textHeight, data_.width,       data_.lineSpacing,   data_.lineSpacingStyle == exactly,
        attachment(),     data_.widthFactor, data_.obliqueDegrees};
    if (!layout_ || layout_->format != format) {
        const qx::db::Record* record = objectId().record();
        const qx::db::Drawing* drawing = record ? qx::db::RecordChain::drawingOf(record) : nullptr;
        const std::string bytes = drawing ? joinedText(*drawing, record) : "";
        const std::u32string text = drawing ? drawing->encoding().decodeMultiline(bytes) : U"";
        layout_ = std::make_unique<Layout>(Layout{format, layOut(text, format)});
    }
    return layout_->text;
}

double AcDbMText::actualHeight() const { return lines().top - lines().bottom; }
double AcDbMText::actualWidth() const { return lines().right - lines().left; }

void AcDbMText::getBoundingPoints(AcGePoint3dArray& corners) const {
    const MultilineText& text = lines();
    const auto [along, up] = axes();
    corners.setLogicalLength(0);
    for (const double y : {text.top, text.bottom})
        for (const double x : {text.left, text.right}) corners.append(data_.location + (along * x + up * y));
}

void AcDbMText::draw(qx::shape::Sink& sink, const AcGePoint3d& location, const Axes& axes) const {
    const MultilineText& text = lines();
    const auto& [along, up] = axes;
    for (const MultilineRun& run : text.runs)
        sink.text({location + (along * run.x + up * run.y), along * (run.height * run.widthFactor),
                   (up + along * run.slant) * run.height, run.extent, text.charactersOf(run), nullptr});
}

void AcDbMText::shape(qx::shape::Sink& sink) const { draw(sink, data_.location, axes()); }

void AcDbMText::outline(qx::shape::Sink& sink) const {
    qx::shape::ExtentsSink extents; // in the text's own axes
    draw(extents, AcGePoint3d::kOrigin, {AcGeVector3d::kXAxis, AcGeVector3d::kYAxis});
    const qx::shape::Box& box = extents.box();
    if (box.isEmpty()) return;
    const auto [along, up] = axes();
    const qx::text::TextExtent whole{0, box.min.x, box.max.x, box.min.y, box.max.y, false};
    sink.text({data_.location, along, up, whole, {}, nullptr});
}
