#include "db/Drawing.h"
#include "db/FieldMove.h"
#include "db/FieldTable.h"
#include "dbcurve.h"
#include "dbelipse.h"
#include "dbents.h"
#include "dbmtext.h"
#include "shape/ExtentsSink.h"

#include <cmath>

using qx::db::Drawing;
using qx::db::EntityProperties;
using qx::db::Field;
using qx::db::FieldTable;
using qx::db::LayerState;
using qx::db::Role;

ACRX_DEFINE_MEMBERS(AcDbEntity, AcDbObject, nullptr)
ACRX_DEFINE_MEMBERS(AcDbCurve, AcDbEntity, nullptr)
ACRX_DEFINE_MEMBERS(AcDb2dPolyline, AcDbCurve, L"POLYLINE")
ACRX_DEFINE_MEMBERS(AcDb3dPolyline, AcDbCurve, L"POLYLINE")
ACRX_DEFINE_MEMBERS(AcDbEllipse, AcDbCurve, L"ELLIPSE")
ACRX_DEFINE_MEMBERS(AcDbMText, AcDbEntity, L"MTEXT")

namespace {

const LayerState noLayer{};

Acad::ErrorStatus faultOnTransform(const AcDbEntity& entity) {
    const qx::db::Record* record = entity.objectId().record();
    return record ? qx::db::RecordChain::drawingOf(record)->faultAt(Drawing::Action::transform, record) : Acad::eOk;
}

bool isFinite(const AcGePoint3d& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

} // namespace

AcDbEntity::AcDbEntity() : layer_{&noLayer} {}

AcDbEntity::AcDbEntity(const AcDbEntity& other)
    : AcDbObject{other}, layer_{other.layer_},
      xdata_{other.xdata_ ? std::make_unique<qx::db::XDataPoints>(*other.xdata_) : nullptr}, kept_{other.kept_} {}

AcDbEntity::~AcDbEntity() = default;

std::unique_ptr<AcDbObject> AcDbEntity::copied() const { return std::make_unique<AcDbEntity>(*this); }

const FieldTable* AcDbEntity::fieldTable() const {
    static const FieldTable table{{
        {Role::integer, 60, offsetof(EntityProperties, invisible)},
        {Role::integer, 62, offsetof(EntityProperties, colour), 256},
    }};
    return &table;
}

void AcDbEntity::setXDataPoints(std::unique_ptr<qx::db::XDataPoints> points) { xdata_ = std::move(points); }

const EntityProperties& AcDbEntity::properties() const {
    return *static_cast<const EntityProperties*>(const_cast<AcDbEntity*>(this)->fieldBase());
}

AcDbObjectId AcDbEntity::layerId() const { return AcDbObjectId{layer_->record}; }

Adesk::UInt16 AcDbEntity::colorIndex() const { return static_cast<Adesk::UInt16>(properties().colour); }

Acad::ErrorStatus AcDbEntity::setColorIndex(Adesk::UInt16 index, bool) {
    if (index > 256) return Acad::eBadColorIndex;
    assertWriteEnabled();
    static_cast<EntityProperties*>(fieldBase())->colour = index;
    return Acad::eOk;
}

bool AcDbEntity::isVisible() const { return properties().invisible == 0 && layer_->isVisible(); }

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d& matrix) {
    if (!isMeasurable()) return Acad::eNotApplicable;
    if (!qx::db::isMotion(matrix)) return Acad::eCannotScaleNonUniformly;
    if (const Acad::ErrorStatus status = faultOnTransform(*this); status != Acad::eOk) return status;
    const qx::db::FieldMove move{matrix, *fieldTable(), fieldBase(), xdata_.get()};
    if (!move.isSafe()) return Acad::eInvalidInput;
    assertWriteEnabled();
    move.apply();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const {
    if (!isMeasurable()) return Acad::eNotApplicable;
    assertReadEnabled();
    qx::shape::ExtentsSink sink;
    shape(sink);
    if (sink.box().isEmpty()) return Acad::eNullExtents;
    if (!isFinite(sink.box().min) || !isFinite(sink.box().max)) return Acad::eInvalidExtents;
    return extents.set(sink.box().min, sink.box().max);
}
