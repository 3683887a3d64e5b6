// Ellipses. They are carried along as they are.
#pragma once

#include "dbcurve.h"

class QX_HOST_API AcDbEllipse : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbEllipse)
};
