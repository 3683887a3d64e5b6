// What all curves share.
#pragma once

#include "dbmain.h"

class QX_HOST_API AcDbCurve : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbCurve)

    /// Where the curve begins and ends, in world coordinates; the same point when it is closed. The point
    /// keeps its value when the status is not eOk: eNotApplicable for a curve without vertices or of a class
    /// that is only kept.
    virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;
    virtual bool isClosed() const { return false; }
};
