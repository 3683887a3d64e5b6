// Multiline text. It is carried along as it is.
#pragma once

#include "dbmain.h"

class QX_HOST_API AcDbMText : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbMText)
};
