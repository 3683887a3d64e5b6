// Objects, entities and the drawing database, and how objects are opened.
//
// An object is reached through its id: it is opened for reading or writing, used, and closed; the pointer is
// dead after close(). An object that was made with new is open for writing and belongs to its maker until it
// is appended to a drawing; from then on it must be closed and never deleted. Changing an object that is not
// open for writing is an error of the caller: the command that does it is broken off and rolled back.
#pragma once

#include "adsdef.h"
#include "dbid.h"
#include "gemat3d.h"
#include "gepnt3d.h"
#include "gept3dar.h"
#include "gevec3d.h"
#include "rxclass.h"

#include <memory>

class AcDbBlockTable;
class AcDbObject;
class AcDbDictionary;
class AcDbEntity;
class AcDbSymbolTable;
namespace qx::db {
struct BlockDefinition;
class Drawing;
struct FieldTable;
struct LayerState;
struct GroupList;
} // namespace qx::db
namespace qx::shape {
class Sink;
}

namespace qx::db {
/// The groups that every entity has, as the file's numbers. The first member of each entity's data.
struct EntityProperties {
    Adesk::Int32 colour = 256;
    Adesk::Int32 invisible = 0;
};

/// The part of an object that can change, as the store sees it.
struct Fields {
    const FieldTable* table = nullptr; ///< null for a class that is only kept
    void* base = nullptr;              ///< where the table's offsets count from
    GroupList* tail =
        nullptr; ///< numbers behind the fields that move; null for the many objects that have none
    const AcGeVector3d* normal = nullptr; ///< of an owner in whose plane the object lies, when it has none
};

/// What every class with data of its own answers to the store.
template <class Self, class Base> class Described : public Base {
public:
    using Base::Base;
    Fields fields() override { return {&Self::table(), &static_cast<Self*>(this)->data_, this->tail_.get()}; }
    std::unique_ptr<AcDbEntity> copied() const override {
        if constexpr (!Self::standsAlone) return nullptr;
        auto copy = std::make_unique<Self>();
        const auto& self = static_cast<const Self&>(*this);
        copy->data_ = self.data_;
        if constexpr (requires { self.shown_; }) copy->shown_ = self.shown_;
        return copy;
    }
};
} // namespace qx::db

/// A box parallel to the world axes. As constructed it holds nothing: min is 1e20 and max -1e20 in each
/// direction.
class AcDbExtents {
public:
    AcDbExtents() = default;
    AcDbExtents(const AcGePoint3d& min, const AcGePoint3d& max) : min_{min}, max_{max} {}

    const AcGePoint3d& minPoint() const { return min_; }
    const AcGePoint3d& maxPoint() const { return max_; }
    /// eInvalidInput, and no change, when min exceeds max in any direction.
    QX_HOST_API Acad::ErrorStatus set(const AcGePoint3d& min, const AcGePoint3d& max);
    /// Moves the box; one that holds nothing stays so.
    void shift(const AcGeVector3d& by) {
        if (min_.x > max_.x) return;
        min_ += by;
        max_ += by;
    }
    QX_HOST_API void addPoint(const AcGePoint3d& point);
    QX_HOST_API void addExt(const AcDbExtents& other);

private:
    AcGePoint3d min_{1e20, 1e20, 1e20};
    AcGePoint3d max_{-1e20, -1e20, -1e20};
};

class QX_HOST_API AcDbObject : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbObject)
    ~AcDbObject() override;

    /// Null for an object that is in no drawing.
    AcDbObjectId objectId() const { return AcDbObjectId{record_}; }
    AcDbObjectId ownerId() const;
    void getAcDbHandle(AcDbHandle& handle) const;
    AcDbDatabase* database() const;

    /// Ends the rights of one opening. eNotApplicable for an object that is in no drawing.
    Acad::ErrorStatus close();
    /// Needs the object open for writing. eWasErased when it is erased already; `erasing` false brings it
    /// back.
    Acad::ErrorStatus erase(bool erasing = true);
    /// From reading to writing: eHadMultipleReaders with other readers, eWasOpenForWrite when it is that
    /// already, and the refusals of an opening for writing.
    Acad::ErrorStatus upgradeOpen();
    /// From writing to reading: eWasOpenForRead, eWasOpenForNotify when it is not open for writing.
    Acad::ErrorStatus downgradeOpen();

    bool isErased() const;
    bool isReadEnabled() const;
    bool isWriteEnabled() const;
    void assertReadEnabled() const;
    /// Every change begins with this call; it keeps what undo needs to bring back.
    void assertWriteEnabled();

    // Host side: what the store asks of every class.

    virtual qx::db::Fields fields() { return {}; }
    /// Called once after the fields were read; `false` means that the object can't be used, only kept.
    virtual bool afterReading(const qx::db::Drawing&) { return true; }
    /// The layer that the file names; asked of entities before afterReading().
    virtual void setLayerState(const qx::db::LayerState&) {}
    virtual void setTail(std::unique_ptr<qx::db::GroupList>);
    void setRecord(qx::db::Record* record) { record_ = record; }
    /// What may have changed since the object was read: 1, 2 and 4 for translations along x, y and z, 8 for
    /// any other change.
    unsigned touched() const { return touched_; }
    void touch(unsigned changes) { touched_ = static_cast<Adesk::UInt8>(touched_ | changes); }

protected:
    AcDbObject() = default;
    AcDbObject(const AcDbObject&) = delete;
    AcDbObject& operator=(const AcDbObject&) = delete;

private:
    qx::db::Record* record_ = nullptr;
    Adesk::UInt8 touched_ = 0;
};

class QX_HOST_API AcDbEntity : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbEntity)
    AcDbEntity();
    ~AcDbEntity() override;

    AcDbObjectId layerId() const;
    /// 1 to 255, 0 by block, 256 by layer.
    Adesk::UInt16 colorIndex() const;
    /// eBadColorIndex above 256. The parts of an entity keep their colours.
    Acad::ErrorStatus setColorIndex(Adesk::UInt16 index, bool doSubents = true);

    /// The entity under the matrix, in place. Nothing changes when the status is not eOk:
    /// eCannotScaleNonUniformly for a matrix that is not a motion, mirroring or uniform scale; eInvalidInput
    /// when a coordinate would not be finite or would lie beyond 1e15; eNotApplicable for a class that is
    /// only kept. Attributes, vertices and what a dimension shows move along, and the whole stays when one of
    /// them can't.
    virtual Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix);
    /// A copy under the matrix that is in no drawing and belongs to the caller; this entity, which must be
    /// open, stays as it is. Null unless the status is eOk: those of transformBy(), and eNotApplicable for a
    /// class that is not whole without its drawing.
    Acad::ErrorStatus getTransformedCopy(const AcGeMatrix3d& matrix, AcDbEntity*& copy) const;
    /// The tight box of what is drawn, in world coordinates. `extents` keeps its value when there is nothing
    /// to measure: eNullExtents for an entity that draws nothing, eNotApplicable for a class that is only
    /// kept.
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;
    /// Appends the points in which the two entities meet in space, in order along this one, each once.
    /// Passing at no more than 1e-9 of the size of the coordinates counts as meeting; curves that lie upon
    /// each other meet at the ends of the common part, and nowhere when it has none (two equal circles).
    /// Extended, a line has no ends, an arc is its whole circle, an elliptic arc its whole ellipse, an open
    /// polyline goes on straight where its first and last segment are straight; anything else, and what is
    /// inside of a block, stays as it is. Text is the outline of its ink. Both must be open for reading,
    /// unless they are in no drawing. The markers are not looked at.
    ///
    /// eOk and no points when they don't meet; eInvalidInput without an entity; eNotApplicable for a class
    /// that is only kept; eNotImplementedYet when neither is a line, a circle or an arc.
    Acad::ErrorStatus intersectWith(const AcDbEntity* ent, AcDb::Intersect intType, AcGePoint3dArray& points,
                                    Adesk::GsMarker thisGsMarker = 0,
                                    Adesk::GsMarker otherGsMarker = 0) const;

    // Host side.

    /// What transformBy() does with the entity's own data, whether or not it is open: for the parts of an
    /// entity that move along, those without a normal in the plane of their owner. Before, what it will
    /// answer.
    Acad::ErrorStatus moveFields(const AcGeMatrix3d& matrix, const AcGeVector3d* ownersNormal = nullptr);
    Acad::ErrorStatus canMoveFields(const AcGeMatrix3d& matrix, const AcGeVector3d* ownersNormal = nullptr);
    /// The box was measured once and moves along with translations; any other change makes it unknown.
    void forgetBox() { boxVersion_ = 0; }
    /// Hands what the entity looks like to the sink, as primitives in world coordinates. Never allocates.
    virtual void shape(qx::shape::Sink&) const {}
    /// The same as others meet it: what hangs together for the eye is one.
    virtual void outline(qx::shape::Sink& sink) const { shape(sink); }
    /// As much of the shape as has the same box.
    virtual void extremes(qx::shape::Sink& sink) const { shape(sink); }
    /// The same as references to a block show it that the entity is in.
    virtual void shapeInReference(qx::shape::Sink& sink) const { shape(sink); }
    /// False for a class that is not whole without its drawing.
    static constexpr bool standsAlone = true;
    /// The same entity in no drawing, without its extended data; null when that makes no sense.
    virtual std::unique_ptr<AcDbEntity> copied() const { return nullptr; }
    /// False for a part that has no place of its own and stays as it is when its owner moves.
    virtual bool isMovedAlong() const { return true; }
    /// The block whose content is this entity's alone and moves with it; null for nearly all.
    virtual qx::db::BlockDefinition* blockMovedAlong() const { return nullptr; }
    /// False for classes that are carried along as they are: they have no shape and can't be moved.
    virtual bool isMeasurable() const { return false; }
    /// True when the shape always is one segment, or one arc of a circle: such a curve can be intersected
    /// with anything.
    virtual bool isSimpleCurve() const { return false; }
    bool isVisible() const;
    const qx::db::LayerState& layerState() const { return *layer_; }

    qx::db::Fields fields() override;
    void setLayerState(const qx::db::LayerState& layer) override { layer_ = &layer; }
    const qx::db::EntityProperties& properties() const;
    void setTail(std::unique_ptr<qx::db::GroupList> tail) override;

protected:
    const qx::db::LayerState* layer_;
    std::unique_ptr<qx::db::GroupList> tail_;

private:
    Acad::ErrorStatus moveWithParts(const qx::db::Drawing& drawing, const AcGeMatrix3d& matrix);
    Acad::ErrorStatus canMoveBlock(const qx::db::Drawing& drawing, const AcGeMatrix3d& matrix);
    Acad::ErrorStatus canMoveWithParts(const qx::db::Drawing& drawing, const AcGeMatrix3d& matrix);
    void moveAll(const qx::db::Drawing& drawing, const AcGeMatrix3d& matrix);

    mutable AcDbExtents box_;
    mutable Adesk::UInt32 boxVersion_ = 0; ///< of the block definitions when it was measured; 0: unknown
    qx::db::EntityProperties kept_;        ///< of a class without data of its own
};

/// An open drawing.
class QX_HOST_API AcDbDatabase {
public:
    explicit AcDbDatabase(qx::db::Drawing& drawing) : drawing_{drawing} {}
    AcDbDatabase(const AcDbDatabase&) = delete;
    AcDbDatabase& operator=(const AcDbDatabase&) = delete;

    Acad::ErrorStatus getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbBlockTable*& table, AcDb::OpenMode mode) {
        return getBlockTable(table, mode);
    }
    /// eKeyNotFound when the drawing has no group dictionary.
    Acad::ErrorStatus getGroupDictionary(AcDbDictionary*& dictionary, AcDb::OpenMode mode = AcDb::kForRead);

    qx::db::Drawing& drawing() const { return drawing_; }

private:
    qx::db::Drawing& drawing_;
};

/// Opens any object. On failure the pointer is null: eNullObjectId; ePermanentlyErased when the drawing was
/// closed; eWasErased; eWasOpenForRead, eWasOpenForWrite, eWasOpenForNotify; eAtMaxReaders with 256 readers;
/// eLockViolation when the drawing is not locked for the running command; eOnLockedLayer.
QX_HOST_API Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                                 bool openErased = false);
/// The same for entities; eNotThatKindOfClass for any other object.
QX_HOST_API Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& entity, AcDbObjectId id, AcDb::OpenMode mode,
                                                 bool openErased = false);

/// Opens an object as the class of the pointer; eNotThatKindOfClass, and the object closed again, when it is
/// not.
template <class T>
Acad::ErrorStatus acdbOpenObject(T*& object, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                 bool openErased = false) {
    object = nullptr;
    AcDbObject* any = nullptr;
    const Acad::ErrorStatus status = acdbOpenAcDbObject(any, id, mode, openErased);
    if (status != Acad::eOk) return status;
    if (!any->isA()->isDerivedFrom(T::desc())) {
        any->close();
        return Acad::eNotThatKindOfClass;
    }
    object = static_cast<T*>(any);
    return Acad::eOk;
}

/// From the editor's name of an object to its id; eInvalidAdsName for a null or stale name or a selection
/// set's.
QX_HOST_API Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name);
QX_HOST_API Acad::ErrorStatus acdbGetAdsName(ads_name name, AcDbObjectId id);
