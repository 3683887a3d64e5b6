// Construction lines without ends, or with one: what AcDbRay and AcDbXline have in common. In world
// coordinates. They can be picked, crossed, moved and intersected, but have no extents: getGeomExtents()
// answers eNullExtents.
#pragma once

#include "dbcurve.h"

namespace qx::db {

struct EndlessLineData {
    EntityProperties entity;
    AcGePoint3d base;
    AcGeVector3d direction;
};

template <class Self> class EndlessLine : public Described<Self, AcDbCurve> {
public:
    using Data = EndlessLineData;
    bool isMeasurable() const override { return true; }
    bool isSimpleCurve() const override { return true; }

    AcGePoint3d basePoint() const { return data_.base; }
    /// As the file has it, which is a unit vector in good files.
    AcGeVector3d unitDir() const { return data_.direction; }

protected:
    template <class, class> friend class Described;
    Data data_;
};

} // namespace qx::db
