// What all curves share.
#pragma once

#include "dbmain.h"

class QX_HOST_API AcDbCurve : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbCurve)
};
