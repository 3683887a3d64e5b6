#include "db/Blocks.h"
#include "db/Drawing.h"
#include "db/FieldTable.h"
#include "dbdim.h"
#include "ge/OcsFrame.h"
#include "shape/TransformSink.h"

#include <array>

using qx::db::Drawing;
using qx::db::FieldTable;
using qx::db::Guard;
using qx::db::RecordChain;
using qx::db::Role;

ACRX_DEFINE_MEMBERS(AcDbDimension, AcDbEntity, L"DIMENSION")

namespace {

/// Bits of AcDbDimension::Data::given.
enum Given { definition, text, insertion, first, second, third, arc, rotation, horizontal, textAngle, count };

template <class Data> constexpr std::array<Guard, count> makeGuards() {
    std::array<Guard, count> made{};
    for (int i = 0; i < count; ++i)
        made[static_cast<std::size_t>(i)] = {offsetof(Data, given), offsetof(Data, given), 1 << i};
    return made;
}

bool isZero(const AcGePoint3d& p) { return p.x == 0 && p.y == 0 && p.z == 0; }

} // namespace

// Which points there are depends on the kind: those that the file leaves out are not put in.
const FieldTable& AcDbDimension::table() {
    static constexpr std::array<Guard, count> given = makeGuards<Data>();
    static const FieldTable fields = FieldTable::ofEntity(
        sizeof(Data),
        {
            {Role::subclass, 100, 0, 0, "AcDbDimension"},
            {Role::worldPoint, 10, offsetof(Data, definition), 0, nullptr, &given[definition]},
            {Role::ocsPoint, 11, offsetof(Data, text), 0, nullptr, &given[text]},
            {Role::ocsPoint, 12, offsetof(Data, clone), 0, nullptr, &given[insertion]},
            {Role::integer, 70, offsetof(Data, flags)},
            {Role::angleDegrees, 53, offsetof(Data, textDegrees), 0, nullptr, &given[textAngle]},
            {Role::angleDegrees, 51, offsetof(Data, horizontalDegrees), 0, nullptr, &given[horizontal]},
            {Role::normal, 210, offsetof(Data, normal)},
            {Role::worldPoint, 13, offsetof(Data, first), 0, nullptr, &given[first]},
            {Role::worldPoint, 14, offsetof(Data, second), 0, nullptr, &given[second]},
            {Role::worldPoint, 15, offsetof(Data, third), 0, nullptr, &given[third]},
            {Role::ocsPoint, 16, offsetof(Data, arc), 0, nullptr, &given[arc]},
            {Role::length, 40, offsetof(Data, leaderLength)},
            {Role::angleDegrees, 50, offsetof(Data, rotationDegrees), 0, nullptr, &given[rotation]},
        });
    return fields;
}

// A measuring direction of 0 turns even where the file leaves it out: of a rotated dimension its own angle,
// of one that measures ordinates the direction of their x axis. An insertion point of the block and an angle
// of the text that are all zero say that there is none.
bool AcDbDimension::afterReading(const Drawing& drawing) {
    constexpr int kinds = 7, rotated = 0, ordinate = 6;
    const std::string_view bytes = drawing.bytesOf(objectId().record());
    data_.given = qx::db::presentGroups(bytes, {10, 11, 12, 13, 14, 15, 16, 50, 51, 53});
    if ((data_.flags & kinds) == rotated) data_.given |= 1 << rotation;
    if ((data_.flags & kinds) == ordinate) data_.given |= 1 << horizontal;
    if (isZero(data_.clone)) data_.given &= ~(1 << insertion);
    if (data_.textDegrees == 0) data_.given &= ~(1 << textAngle);
    block_ = drawing.blocks().shownByDimension(bytes);
    return true;
}

AcDbObjectId AcDbDimension::dimBlockId() const { return AcDbObjectId{block_ ? block_->record : nullptr}; }

AcGePoint3d AcDbDimension::textPosition() const { return qx::ge::OcsFrame{data_.normal}.toWorld(data_.text); }

void AcDbDimension::shape(qx::shape::Sink& sink) const {
    const qx::db::Record* self = objectId().record();
    const Drawing* drawing = self ? RecordChain::drawingOf(self) : nullptr;
    if (!drawing || !block_) return;
    qx::shape::TransformSink asPart{sink, AcGeMatrix3d{}};
    drawing->blocks().shape(*block_, asPart);
}
