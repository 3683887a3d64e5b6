#include "db/Drawing.h"
#include "db/FieldMove.h"
#include "db/FieldTable.h"
#include "dbcurve.h"
#include "dbents.h"
#include "shape/ExtentsSink.h"
#include "shape/IntersectionSink.h"

#include <cmath>

using qx::db::Drawing;
using qx::db::EntityProperties;
using qx::db::Field;
using qx::db::FieldTable;
using qx::db::LayerState;
using qx::db::RecordChain;
using qx::db::Role;

ACRX_DEFINE_MEMBERS(AcDbEntity, AcDbObject, nullptr)
ACRX_DEFINE_MEMBERS(AcDbCurve, AcDbEntity, nullptr)

namespace {

const LayerState noLayer{};

/// One sum is not finite when any of its terms is not.
bool isFinite(const qx::shape::Box& box) {
    const AcGeVector3d sum = box.min.asVector() + box.max.asVector();
    return std::isfinite(sum.x + sum.y + sum.z);
}

} // namespace

AcDbEntity::AcDbEntity() : layer_{&noLayer} {}

AcDbEntity::~AcDbEntity() = default;

qx::db::Fields AcDbEntity::fields() {
    static const FieldTable table = FieldTable::ofEntity(sizeof(EntityProperties), {});
    return {&table, &kept_, tail_.get()};
}

void AcDbEntity::setTail(std::unique_ptr<qx::db::GroupList> tail) { tail_ = std::move(tail); }

const EntityProperties& AcDbEntity::properties() const {
    return *static_cast<const EntityProperties*>(const_cast<AcDbEntity*>(this)->fields().base);
}

AcDbObjectId AcDbEntity::layerId() const { return AcDbObjectId{layer_->record}; }

Adesk::UInt16 AcDbEntity::colorIndex() const { return static_cast<Adesk::UInt16>(properties().colour); }

Acad::ErrorStatus AcDbEntity::setColorIndex(Adesk::UInt16 index, bool) {
    if (index > 256) return Acad::eBadColorIndex;
    assertWriteEnabled();
    touch(8);
    static_cast<EntityProperties*>(fields().base)->colour = index;
    return Acad::eOk;
}

bool AcDbEntity::isVisible() const { return properties().invisible == 0 && layer_->isVisible(); }

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d& matrix) {
    qx::db::Record* record = objectId().record();
    if (!record) return moveFields(matrix);
    if (!record->has(qx::db::Record::openForWrite)) assertWriteEnabled();
    const Drawing& drawing = *RecordChain::drawingOf(record);
    const Acad::ErrorStatus fault = drawing.faultAt(Drawing::Action::transform, record);
    if (fault != Acad::eOk) return drawing.noted(record, fault);
    if (!isMeasurable()) return drawing.noted(record, Acad::eNotApplicable);
    const bool isAlone = !Drawing::hasParts(record) && !blockMovedAlong();
    return drawing.noted(record, isAlone ? moveFields(matrix) : moveWithParts(drawing, matrix));
}

Acad::ErrorStatus AcDbEntity::moveWithParts(const Drawing& drawing, const AcGeMatrix3d& matrix) {
    Acad::ErrorStatus status = canMoveWithParts(drawing, matrix);
    qx::db::BlockDefinition* block = blockMovedAlong();
    if (status == Acad::eOk && block) status = canMoveBlock(drawing, matrix);
    if (status != Acad::eOk) return status;
    moveAll(drawing, matrix);
    if (!block) return Acad::eOk;
    block->dimension = objectId().record();
    drawing.forEachInBlock(block->record, [&](qx::db::Record* each) {
        if (!each->has(qx::db::Record::erased)) drawing.liveEntity(each)->moveAll(drawing, matrix);
    });
    return Acad::eOk;
}

// Parts that lie in the entity's plane need its normal as it was.
Acad::ErrorStatus AcDbEntity::canMoveWithParts(const Drawing& drawing, const AcGeMatrix3d& matrix) {
    const AcGeVector3d normal = qx::db::normalOf(fields());
    Acad::ErrorStatus status = canMoveFields(matrix);
    drawing.forEachOwned(objectId().record(), [&](qx::db::Record* each) {
        if (status != Acad::eOk) return;
        AcDbEntity* part = drawing.liveEntity(each);
        if (each->kind == qx::db::Kind::vertex && each->has(qx::db::Record::openForWrite))
            status = Acad::eSubentitiesStillOpen;
        else if (!part || part->isMovedAlong())
            status = part ? part->canMoveFields(matrix, &normal) : Acad::eNotApplicable;
    });
    return status;
}

// The layers of what is shown don't count: it is the dimension that moves, and Defpoints is often locked.
Acad::ErrorStatus AcDbEntity::canMoveBlock(const Drawing& drawing, const AcGeMatrix3d& matrix) {
    const qx::db::BlockDefinition& block = *blockMovedAlong();
    if (drawing.blocks().usesOf(block) != 1) return Acad::eNotApplicable;
    Acad::ErrorStatus status = Acad::eOk;
    drawing.forEachInBlock(block.record, [&](qx::db::Record* each) {
        if (status != Acad::eOk || each->has(qx::db::Record::erased)) return;
        AcDbEntity* part = drawing.liveEntity(each);
        if (!part || part->blockMovedAlong())
            status = Acad::eNotApplicable;
        else if (each->isOpen())
            status = Acad::eSubentitiesStillOpen;
        else
            status = part->canMoveWithParts(drawing, matrix);
    });
    return status;
}

void AcDbEntity::moveAll(const Drawing& drawing, const AcGeMatrix3d& matrix) {
    const AcGeVector3d normal = qx::db::normalOf(fields());
    moveFields(matrix);
    if (!Drawing::hasParts(objectId().record())) return;
    drawing.forEachOwned(objectId().record(), [&](qx::db::Record* each) {
        AcDbEntity* part = drawing.liveEntity(each);
        if (part->isMovedAlong()) part->moveFields(matrix, &normal);
    });
}

Acad::ErrorStatus AcDbEntity::canMoveFields(const AcGeMatrix3d& matrix, const AcGeVector3d* ownersNormal) {
    qx::db::Fields all = fields();
    all.normal = ownersNormal;
    if (!all.table->isMovable()) return Acad::eNotApplicable;
    const bool isShift = qx::db::isTranslation(matrix);
    const double scale = isShift ? 1 : qx::db::scaleOf(matrix);
    if (scale == 0) return Acad::eCannotScaleNonUniformly;
    const bool isSafe = isShift ? qx::db::Shift{matrix.translation(), all}.isSafe()
                                : qx::db::Motion{matrix, scale, all}.isSafe();
    return isSafe ? Acad::eOk : Acad::eInvalidInput;
}

// Nothing is logged or marked as changed before it is sure that the motion will be done.
Acad::ErrorStatus AcDbEntity::moveFields(const AcGeMatrix3d& matrix, const AcGeVector3d* ownersNormal) {
    qx::db::Fields all = fields();
    all.normal = ownersNormal;
    qx::db::Record* record = objectId().record();
    if (!all.table->isMovable()) return Acad::eNotApplicable;
    if (qx::db::isTranslation(matrix)) {
        const qx::db::Shift shift{matrix.translation(), all};
        if (!shift.isSafe()) return Acad::eInvalidInput;
        touch(shift.axes());
        shift.apply(record ? RecordChain::drawingOf(record)->aboutToTranslate(record, shift) : nullptr);
        box_.shift(matrix.translation());
        return Acad::eOk;
    }
    const double scale = qx::db::scaleOf(matrix);
    if (scale == 0) return Acad::eCannotScaleNonUniformly;
    const qx::db::Motion motion{matrix, scale, all};
    if (!motion.isSafe()) return Acad::eInvalidInput;
    if (record) RecordChain::drawingOf(record)->aboutToChange(record);
    touch(15);
    motion.apply();
    forgetBox();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::getTransformedCopy(const AcGeMatrix3d& matrix, AcDbEntity*& copy) const {
    copy = nullptr;
    assertReadEnabled();
    std::unique_ptr<AcDbEntity> moved = copied();
    if (!moved) return Acad::eNotApplicable;
    const Acad::ErrorStatus status = moved->transformBy(matrix);
    if (status == Acad::eOk) copy = moved.release();
    return status;
}

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const {
    const qx::db::Record* record = objectId().record();
    if (record && !record->isOpen()) assertReadEnabled();
    const Adesk::UInt32 version = record ? RecordChain::drawingOf(record)->blocks().version() : 0;
    if (boxVersion_ == 0 || (boxVersion_ != version && qx::db::showsBlock(record->kind))) {
        qx::shape::ExtentsSink sink;
        extremes(sink);
        if (!isMeasurable()) return Acad::eNotApplicable;
        if (sink.box().isEmpty()) return Acad::eNullExtents;
        if (!isFinite(sink.box())) return Acad::eInvalidExtents;
        box_ = AcDbExtents{sink.box().min, sink.box().max};
        boxVersion_ = version;
    }
    extents = box_;
    return Acad::eOk;
}

// The walk goes over the operand that may have many primitives; the other one has a single one and is held.
Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity* ent, AcDb::Intersect intType,
                                            AcGePoint3dArray& points, Adesk::GsMarker,
                                            Adesk::GsMarker) const {
    using namespace qx::shape;
    if (!ent) return Acad::eInvalidInput;
    assertReadEnabled();
    ent->assertReadEnabled();
    if (!isMeasurable() || !ent->isMeasurable()) return Acad::eNotApplicable;
    if (!isSimpleCurve() && !ent->isSimpleCurve()) return Acad::eNotImplementedYet;
    const auto extentOf = [&](AcDb::Intersect bit) {
        return intType & bit ? Extent::extended : Extent::asDrawn;
    };
    const Extent here = extentOf(AcDb::kExtendThis), there = extentOf(AcDb::kExtendArg);
    OnlyPrimitive held;
    (isSimpleCurve() ? this : ent)->shape(held);
    held.operand.extent = isSimpleCurve() ? here : there;
    IntersectionSink sink{held.operand, isSimpleCurve() ? there : here,
                          isSimpleCurve() ? IntersectionSink::Order::alongCurve
                                          : IntersectionSink::Order::asSeen};
    (isSimpleCurve() ? ent : this)->outline(sink);
    sink.appendTo(points);
    return Acad::eOk;
}
