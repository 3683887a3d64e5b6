// Construction lines that begin at a point and have no end.
#pragma once

#include "qxendless.h"

class QX_HOST_API AcDbRay : public qx::db::EndlessLine<AcDbRay> {
public:
    ACRX_DECLARE_MEMBERS(AcDbRay)
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
};
