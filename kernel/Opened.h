// An open object whose closing belongs to a scope, for those that a function opens rather than their id.
#pragma once

#include "dbmain.h"

#include <memory>

namespace qx::kernel {

struct Closing {
    void operator()(AcDbObject* object) const { object->close(); }
};
template <class T> using Opened = std::unique_ptr<T, Closing>;

} // namespace qx::kernel
