// Services that the host gives to the database layer.
#pragma once

#include "dbmain.h"

class QX_HOST_API AcDbHostApplicationServices {
public:
    /// The drawing that new objects go to; null when none is open.
    AcDbDatabase* workingDatabase() const { return working_; }
    void setWorkingDatabase(AcDbDatabase* database) { working_ = database; }

private:
    AcDbDatabase* working_ = nullptr;
};

QX_HOST_API AcDbHostApplicationServices* acdbHostApplicationServices();
