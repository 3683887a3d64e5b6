// Construction lines without ends.
#pragma once

#include "qxendless.h"

class QX_HOST_API AcDbXline : public qx::db::EndlessLine<AcDbXline> {
public:
    ACRX_DECLARE_MEMBERS(AcDbXline)
    static const qx::db::FieldTable& table();
    void shape(qx::shape::Sink& sink) const override;
};
