// Dimensions of every kind: what is drawn is a block of its own, in world coordinates, that the program which
// made the dimension left for it. A dimension that has none is only kept.
#pragma once

#include "dbmain.h"

#include <string_view>

/// transformBy() moves the block's content along. It answers eNotApplicable when anything else shows the same
/// block, or when a part of it can't be moved; eOnLockedLayer when a part lies on a locked layer;
/// eSubentitiesStillOpen while one is open.
class QX_HOST_API AcDbDimension : public qx::db::Described<AcDbDimension, AcDbEntity> {
public:
    static constexpr bool standsAlone = false;
    ACRX_DECLARE_MEMBERS(AcDbDimension)
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    bool isMeasurable() const override { return block_ != nullptr; }
    bool afterReading(const qx::db::Drawing& drawing) override;
    qx::db::BlockDefinition* blockMovedAlong() const override { return block_; }

    /// Null when there is none.
    AcDbObjectId dimBlockId() const;
    /// The middle of the text, in world coordinates.
    AcGePoint3d textPosition() const;
    AcGeVector3d normal() const { return data_.normal; }

    struct Data {
        qx::db::EntityProperties entity;
        AcGePoint3d definition, first, second, third; ///< world coordinates: 10 13 14 15
        AcGePoint3d text, clone, arc;                 ///< object coordinates: 11 12 16
        double leaderLength = 0, rotationDegrees = 0, horizontalDegrees = 0, textDegrees = 0;
        AcGeVector3d normal{0, 0, 1};
        Adesk::Int32 flags = 0;
        Adesk::Int32 given = 0; ///< a bit for each point and angle that a motion changes
    };

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
    qx::db::BlockDefinition* block_ = nullptr;
};
