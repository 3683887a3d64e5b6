#include "db/Blocks.h"
#include "db/Drawing.h"
#include "db/FieldTable.h"
#include "dbents.h"
#include "ge/OcsFrame.h"
#include "shape/TransformSink.h"

#include <cmath>
#include <numbers>

using qx::db::Drawing;
using qx::db::FieldTable;
using qx::db::Record;
using qx::db::RecordChain;
using qx::db::Role;
using qx::ge::OcsFrame;

ACRX_DEFINE_MEMBERS(AcDbBlockReference, AcDbEntity, L"INSERT")

namespace {
constexpr double degree = std::numbers::pi / 180;
}

const FieldTable& AcDbBlockReference::table() {
    static const FieldTable fields =
        FieldTable::ofEntity(sizeof(Data), {
                                               {Role::subclass, 100, 0, 0, "AcDbBlockReference"},
                                               {Role::text, 2, offsetof(Data, name)},
                                               {Role::ocsPoint, 10, offsetof(Data, position)},
                                               {Role::length, 41, offsetof(Data, xScale), 1},
                                               {Role::length, 42, offsetof(Data, yScale), 1},
                                               {Role::height, 43, offsetof(Data, zScale), 1},
                                               {Role::angleDegrees, 50, offsetof(Data, rotationDegrees)},
                                               {Role::integer, 70, offsetof(Data, columns), 1},
                                               {Role::integer, 71, offsetof(Data, rows), 1},
                                               {Role::normal, 210, offsetof(Data, normal)},
                                           });
    return fields;
}

bool AcDbBlockReference::afterReading(const Drawing& drawing) {
    definition_ = drawing.blocks().named(data_.name);
    return true;
}

bool AcDbBlockReference::isMeasurable() const { return data_.columns <= 1 && data_.rows <= 1; }

AcDbObjectId AcDbBlockReference::blockTableRecord() const {
    return AcDbObjectId{definition_ ? definition_->record : nullptr};
}

AcGePoint3d AcDbBlockReference::position() const { return OcsFrame{data_.normal}.toWorld(data_.position); }

double AcDbBlockReference::rotation() const {
    const double rest = std::fmod(data_.rotationDegrees * degree, 2 * std::numbers::pi);
    return rest < 0 ? rest + 2 * std::numbers::pi : rest;
}

AcGeMatrix3d AcDbBlockReference::blockTransform() const {
    const OcsFrame frame{data_.normal};
    const double angle = data_.rotationDegrees * degree;
    const double c = angle == 0 ? 1 : std::cos(angle), s = angle == 0 ? 0 : std::sin(angle);
    const AcGeVector3d x = frame.toWorld(AcGeVector3d{c, s, 0}) * data_.xScale;
    const AcGeVector3d y = frame.toWorld(AcGeVector3d{-s, c, 0}) * data_.yScale;
    const AcGeVector3d z = frame.z * data_.zScale;
    const AcGePoint3d base = definition_ ? definition_->basePoint : AcGePoint3d{};
    const AcGePoint3d origin = frame.toWorld(data_.position) - (x * base.x + y * base.y + z * base.z);
    return AcGeMatrix3d{}.setCoordSystem(origin, x, y, z);
}

void AcDbBlockReference::blockShape(qx::shape::Sink& sink) const {
    const Record* self = objectId().record();
    const Drawing* drawing = self ? RecordChain::drawingOf(self) : nullptr;
    if (!drawing || !definition_) return;
    qx::shape::TransformSink transformed{sink, blockTransform()};
    drawing->blocks().shape(*definition_, transformed);
}

void AcDbBlockReference::shape(qx::shape::Sink& sink) const {
    const Record* self = objectId().record();
    const Drawing* drawing = self ? RecordChain::drawingOf(self) : nullptr;
    if (!drawing) return;
    blockShape(sink);
    drawing->forEachOwned(self, [&](Record* attribute) {
        const AcDbEntity* entity = drawing->liveEntity(attribute);
        if (entity && !attribute->has(Record::erased) && entity->isVisible()) entity->shape(sink);
    });
}

Acad::ErrorStatus AcDbBlockReference::transformBy(const AcGeMatrix3d& matrix) {
    if (!isMeasurable()) return Acad::eNotApplicable;
    return AcDbEntity::transformBy(matrix);
}

AcDbObjectIterator* AcDbBlockReference::attributeIterator() const {
    return new AcDbObjectIterator{objectId().record()};
}
