#include "draw/ChangeWatch.h"

#include <utility>

namespace qx::draw {

ChangeWatch::ChangeWatch(const db::Drawing& drawing)
    : drawing_{drawing}, stepsDone_{drawing.history().stepsDone()} {}

// What a step had changed when it was last looked at counts again: it may have been rolled back since.
std::vector<db::Record*> ChangeWatch::take() {
    const db::History& history = drawing_.history();
    const std::size_t before = std::exchange(stepsDone_, history.stepsDone());
    std::vector<db::Record*> changed = stepsDone_ >= before ? history.changedByLast(stepsDone_ - before)
                                                            : history.changedByNext(before - stepsDone_);
    changed.insert(changed.end(), unfinished_.begin(), unfinished_.end());
    unfinished_ = history.isRecording() ? history.changedSoFar() : std::vector<db::Record*>{};
    changed.insert(changed.end(), unfinished_.begin(), unfinished_.end());
    return changed;
}

} // namespace qx::draw
