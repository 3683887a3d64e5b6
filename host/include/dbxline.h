// Construction lines without ends, in world coordinates. They can be picked, crossed,
// moved and intersected, but have no extents: getGeomExtents() answers eNullExtents.
#pragma once

#include "dbcurve.h"

class QX_HOST_API AcDbXline : public qx::db::Described<AcDbXline, AcDbCurve> {
public:
    ACRX_DECLARE_MEMBERS(AcDbXline)
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    bool isMeasurable() const override { return true; }
    bool isSimpleCurve() const override { return true; }

    AcGePoint3d basePoint() const { return data_.base; }
    /// As the file has it, which is a unit vector in good files.
    AcGeVector3d unitDir() const { return data_.direction; }

    struct Data {
        qx::db::EntityProperties entity;
        AcGePoint3d base;
        AcGeVector3d direction;
    };

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
};
