#include "db/Blocks.h"
#include "db/Drawing.h"
#include "db/FieldTable.h"
#include "dbents.h"
#include "ge/OcsFrame.h"
#include "shape/ExtentsSink.h"
#include "shape/TransformSink.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

using qx::db::Drawing;
using qx::db::FieldTable;
using qx::db::Record;
using qx::db::RecordChain;
using qx::db::Role;
using qx::ge::OcsFrame;

ACRX_DEFINE_MEMBERS(AcDbBlockReference, AcDbEntity, L"INSERT")
ACRX_DEFINE_MEMBERS(AcDbMInsertBlock, AcDbBlockReference, L"INSERT")

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
                                               {Role::length, 44, offsetof(Data, columnSpacing)},
                                               {Role::length, 45, offsetof(Data, rowSpacing)},
                                               {Role::normal, 210, offsetof(Data, normal)},
                                           });
    return fields;
}

bool AcDbBlockReference::afterReading(const Drawing& drawing) {
    definition_ = drawing.blocks().named(data_.name);
    return true;
}

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

AcDbObjectIterator* AcDbBlockReference::attributeIterator() const {
    return new AcDbObjectIterator{objectId().record()};
}

// ---- rows and columns

Adesk::UInt16 AcDbMInsertBlock::columns() const {
    return static_cast<Adesk::UInt16>(std::clamp(data_.columns, 1, mostInLine));
}
Adesk::UInt16 AcDbMInsertBlock::rows() const {
    return static_cast<Adesk::UInt16>(std::clamp(data_.rows, 1, mostInLine));
}

AcGeVector3d AcDbMInsertBlock::offsetOf(int column, int row) const {
    const double angle = data_.rotationDegrees * degree, c = std::cos(angle), s = std::sin(angle);
    const double x = column * data_.columnSpacing, y = row * data_.rowSpacing;
    return OcsFrame{data_.normal}.toWorld(AcGeVector3d{c * x - s * y, s * x + c * y, 0});
}

void AcDbMInsertBlock::drawCell(qx::shape::Sink& sink, const AcGeVector3d& offset) const {
    qx::shape::TransformSink moved{sink, AcGeMatrix3d::translation(offset)};
    AcDbBlockReference::shape(moved);
}

// Cells differ by their place only, so that their boxes together are the box of those in the corners.
void AcDbMInsertBlock::extremes(qx::shape::Sink& sink) const {
    forEachCornerCell([&](const AcGeVector3d& offset) { drawCell(sink, offset); });
}

void AcDbMInsertBlock::shape(qx::shape::Sink& sink) const {
    const Record* self = objectId().record();
    const Drawing* drawing = self ? RecordChain::drawingOf(self) : nullptr;
    if (!drawing) return;
    std::size_t attributes = 0;
    drawing->forEachOwned(self, [&](Record*) { ++attributes; });
    if (!drawing->blocks().hasRoomFor(definition_, attributes, cellCount())) return drawCorners(sink);
    for (int row = 0; row < rows() && !sink.isFull(); ++row)
        for (int column = 0; column < columns() && !sink.isFull(); ++column)
            drawCell(sink, offsetOf(column, row));
}

// The lines run from the middle of one cell to that of another: they lead nowhere outside.
void AcDbMInsertBlock::drawCorners(qx::shape::Sink& sink) const {
    extremes(sink);
    qx::shape::ExtentsSink cell;
    drawCell(cell, {});
    if (cell.box().isEmpty()) return;
    const AcGePoint3d first = cell.box().centre();
    const int right = columns() - 1, top = rows() - 1;
    const std::array corners{first, first + offsetOf(right, 0), first + offsetOf(right, top),
                             first + offsetOf(0, top)};
    for (std::size_t i = 0; i < corners.size(); ++i)
        sink.segment({corners[i], corners[(i + 1) % corners.size()]});
}
