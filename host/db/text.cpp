#include "db/Drawing.h"
#include "db/FieldTable.h"
#include "dbents.h"
#include "ge/OcsFrame.h"
#include "shape/Sink.h"
#include "text/measure.h"
#include "text/shownText.h"

#include <algorithm>
#include <cmath>
#include <numbers>

using qx::db::FieldTable;
using qx::db::Role;
using qx::ge::OcsFrame;

ACRX_DEFINE_MEMBERS(AcDbText, AcDbEntity, L"TEXT")
ACRX_DEFINE_MEMBERS(AcDbAttribute, AcDbText, L"ATTRIB")
ACRX_DEFINE_MEMBERS(AcDbAttributeDefinition, AcDbText, L"ATTDEF")

namespace {
constexpr double degree = std::numbers::pi / 180;

double turnOf(double degrees) {
    const double rest = std::fmod(degrees * degree, 2 * std::numbers::pi);
    return rest < 0 ? rest + 2 * std::numbers::pi : rest;
}
} // namespace

/// In object coordinates, as directions in the text's plane.
struct AcDbText::Placement {
    AcGePoint3d origin;
    AcGeVector3d along, up;
};

namespace {

std::string_view shownPart(std::string_view text) { return text.substr(0, qx::text::longestShown); }

qx::text::TextExtent extentOf(std::string_view text, const qx::db::Drawing& drawing) {
    if (text.size() > qx::text::longestShown) drawing.addFindingAt(text.data(), qx::db::longTextSentence);
    return qx::text::measure(qx::text::shownText(drawing.encoding().decode(shownPart(text))));
}

/// Text and attributes differ in the group of the vertical mode, and attributes have flags besides.
template <class Data> std::vector<qx::db::Field> fieldsOfText() {
    // Left text on its baseline has no alignment point, whatever the file says there.
    static constexpr qx::db::Guard onlyJustified{offsetof(Data, horizontalMode),
                                                 offsetof(Data, verticalMode)};
    return {
        {Role::subclass, 100, 0, 0, "AcDbText"},
        {Role::height, 39, offsetof(Data, thickness)},
        {Role::ocsPoint, 10, offsetof(Data, position)},
        {Role::length, 40, offsetof(Data, height)},
        {Role::text, 1, offsetof(Data, text)},
        {Role::angleDegrees, 50, offsetof(Data, rotationDegrees)},
        {Role::plain, 41, offsetof(Data, widthFactor), 1},
        {Role::plain, 51, offsetof(Data, obliqueDegrees)},
        {Role::integer, 71, offsetof(Data, generation)},
        {Role::integer, 72, offsetof(Data, horizontalMode)},
        {Role::ocsPoint, 11, offsetof(Data, alignment), 0, nullptr, &onlyJustified},
        {Role::normal, 210, offsetof(Data, normal)},
    };
}

} // namespace

const FieldTable& AcDbText::table() {
    static const FieldTable fields = [] {
        auto list = fieldsOfText<Data>();
        list.push_back({Role::integer, 73, offsetof(Data, verticalMode)});
        return FieldTable::ofEntity(sizeof(Data), list);
    }();
    return fields;
}

const FieldTable& AcDbAttribute::table() {
    static const FieldTable fields = [] {
        auto list = fieldsOfText<Data>();
        list.push_back({Role::subclass, 100, 0, 0, "AcDbAttribute"});
        list.push_back({Role::integer, 70, offsetof(Data, attributeFlags)});
        list.push_back({Role::integer, 74, offsetof(Data, verticalMode)});
        return FieldTable::ofEntity(sizeof(Data), list);
    }();
    return fields;
}

const FieldTable& AcDbAttributeDefinition::table() {
    static const FieldTable fields = [] {
        auto list = fieldsOfText<Data>();
        list.push_back({Role::subclass, 100, 0, 0, "AcDbAttributeDefinition"});
        list.push_back({Role::text, 2, offsetof(Data, tag)});
        list.push_back({Role::integer, 70, offsetof(Data, attributeFlags)});
        list.push_back({Role::integer, 74, offsetof(Data, verticalMode)});
        return FieldTable::ofEntity(sizeof(Data), list);
    }();
    return fields;
}

bool AcDbText::afterReading(const qx::db::Drawing& drawing) {
    shown_ = {extentOf(data_.text, drawing), &drawing.encoding()};
    return true;
}

bool AcDbAttributeDefinition::afterReading(const qx::db::Drawing& drawing) {
    shown_ = {extentOf(data_.tag, drawing), &drawing.encoding()};
    if (isConstant()) constantExtent_ = extentOf(data_.text, drawing);
    return true;
}

AcGePoint3d AcDbText::alignmentPoint() const { return OcsFrame{data_.normal}.toWorld(data_.alignment); }
double AcDbText::rotation() const { return turnOf(data_.rotationDegrees); }
double AcDbText::oblique() const { return data_.obliqueDegrees * degree; }

AcDb::TextHorzMode AcDbText::horizontalMode() const {
    return static_cast<AcDb::TextHorzMode>(std::clamp(data_.horizontalMode, 0, 5));
}
AcDb::TextVertMode AcDbText::verticalMode() const {
    return static_cast<AcDb::TextVertMode>(std::clamp(data_.verticalMode, 0, 3));
}

AcGePoint3d AcDbText::position() const {
    return OcsFrame{data_.normal}.toWorld(placement(shown_.extent).origin);
}

// Left text on its baseline hangs from its position, aligned and fitted text lies between its two points, and
// any other text hangs from its alignment point, from which its position is worked out.
AcDbText::Placement AcDbText::placement(const qx::text::TextExtent& extent) const {
    using namespace AcDb;
    const TextHorzMode across = horizontalMode();
    const TextVertMode down = verticalMode();
    const bool isBetweenPoints = across == kTextAlign || across == kTextFit;
    const AcGeVector3d span = data_.alignment - data_.position;
    double angle = data_.rotationDegrees * degree;
    double height = data_.height, width = data_.height * data_.widthFactor;
    if (isBetweenPoints && extent.advance > 0 && span.length() > 0) {
        angle = std::atan2(span.y, span.x);
        const double fitted = span.length() / extent.advance;
        if (across == kTextAlign) height *= width != 0 ? fitted / width : 1;
        width = fitted;
    }
    const double c = std::cos(angle), s = std::sin(angle), slant = qx::text::slantOf(data_.obliqueDegrees);
    const double mirrorX = data_.generation & 2 ? -1 : 1, mirrorY = data_.generation & 4 ? -1 : 1;
    Placement result{data_.position, AcGeVector3d{c, s, 0} * (width * mirrorX),
                     AcGeVector3d{-s + c * slant * mirrorX, c + s * slant * mirrorX, 0} * (height * mirrorY)};
    if (isBetweenPoints || (across == kTextLeft && down == kTextBase)) return result;

    const double left = across == kTextCenter || across == kTextMid ? 0.5 : across == kTextRight ? 1.0 : 0.0;
    double rise = 0; // of the anchor above the baseline, in heights
    if (across == kTextMid)
        rise = (extent.inkBottom + extent.inkTop) / 2;
    else if (down == kTextBottom)
        rise = std::min(extent.inkBottom, 0.0);
    else if (down == kTextVertMid)
        rise = 0.5;
    else if (down == kTextTop)
        rise = 1;
    const AcGeVector3d upright = AcGeVector3d{-s, c, 0} * (height * mirrorY);
    result.origin = data_.alignment - result.along * (left * extent.advance) - upright * rise;
    return result;
}

void AcDbText::draw(qx::shape::Sink& sink, std::string_view text, const qx::text::TextExtent& extent) const {
    if (extent.blank) return;
    const OcsFrame frame{data_.normal};
    const Placement place = placement(extent);
    sink.text({frame.toWorld(place.origin), frame.toWorld(place.along), frame.toWorld(place.up), extent,
               shownPart(text), shown_.encoding});
}

void AcDbText::shape(qx::shape::Sink& sink) const { draw(sink, data_.text, shown_.extent); }

void AcDbAttribute::shape(qx::shape::Sink& sink) const {
    constexpr int invisible = 1;
    if (!(data_.attributeFlags & invisible)) AcDbText::shape(sink);
}

void AcDbAttributeDefinition::shape(qx::shape::Sink& sink) const { draw(sink, data_.tag, shown_.extent); }

void AcDbAttributeDefinition::shapeInReference(qx::shape::Sink& sink) const {
    if (isConstant() && !isInvisible()) draw(sink, data_.text, constantExtent_);
}
