// Which objects of a drawing may look different from when it was last asked, so that what is shown can follow
// a command while it runs. Asked once after each command at least, and as often as wanted while one runs.
#pragma once

#include "db/Drawing.h"

#include <vector>

namespace qx::draw {

class QX_HOST_API ChangeWatch {
public:
    explicit ChangeWatch(const db::Drawing& drawing);

    /// In no special order; some may be named twice.
    std::vector<db::Record*> take();

private:
    const db::Drawing& drawing_;
    std::size_t stepsDone_;
    std::vector<db::Record*> unfinished_; ///< what the open step had changed then
};

} // namespace qx::draw
