// Hatches: areas in one plane, filled with a colour, lines or a gradient.
#pragma once

#include "dbmain.h"
#include "qxgroups.h"

namespace qx::ge {
struct OcsFrame;
}

/// Looks like the outlines of its boundary paths, always closed; what fills them is not drawn. The objects
/// that it was made from are not looked at: it keeps its shape when they move alone.
///
/// A boundary with a spline whose numbers don't make a curve is a finding: the object is kept and can't be
/// used.
class QX_HOST_API AcDbHatch : public qx::db::Described<AcDbHatch, AcDbEntity> {
public:
    ACRX_DECLARE_MEMBERS(AcDbHatch)
    static constexpr bool standsAlone = false;
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    bool isMeasurable() const override { return true; }
    bool afterReading(const qx::db::Drawing& drawing) override;

    /// How many boundary paths there are.
    int numLoops() const;
    double elevation() const { return data_.elevation; }
    AcGeVector3d normal() const { return data_.normal; }

    struct Data {
        qx::db::EntityProperties entity;
        double x = 0, y = 0; ///< nobody's
        double elevation = 0;
        AcGeVector3d normal{0, 0, 1};
        qx::db::GroupList groups; ///< boundary paths, pattern lines, seeds and the gradient's angle
    };

private:
    template <class, class> friend class qx::db::Described;
    Data data_;
};
