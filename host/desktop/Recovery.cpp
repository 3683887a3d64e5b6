#include "desktop/Recovery.h"

#include "ed/CommandRunner.h"
#include "ed/ScriptSource.h"
#include "ed/forms.h"

#include <algorithm>
#include <array>
#include <utility>

namespace qx::desktop {
namespace {

/// Whoever repeats what was done to the drawing must leave these out.
bool isLeftOut(const std::string& command) {
    constexpr std::array names{"OPEN", "SAVE", "SAVEAS", "QUIT", "ZOOM"};
    return std::ranges::find(names, command) != names.end();
}

/// They mean commands that were finished before.
bool takesBack(const std::string& command) {
    constexpr std::array names{"U", "UNDO", "REDO"};
    return std::ranges::find(names, command) != names.end();
}

/// In answers of a bearable length.
std::string selectionForms(const ed::RecordSet& set) {
    constexpr std::size_t most = 100;
    if (set.isEmpty()) return {};
    std::string forms;
    for (std::size_t i = 0; i < set.size(); ++i) {
        if (i % most == 0) forms += i == 0 ? "(select" : ")\n(select add";
        forms += ' ' + ed::handentForm(set.members()[i]->handle);
    }
    return forms + ")\n";
}

std::string lastLine(std::string_view text) {
    if (text.empty()) return {};
    const std::size_t before = text.find_last_of('\n', text.size() - 2);
    return std::string{text.substr(before == std::string_view::npos ? 0 : before + 1)};
}

} // namespace

Recovery::Recovery(ed::Session& session) : session_{session} { session_.line().keepsScript = true; }

// What is in the file, or in a copy, need not be told.
void Recovery::startAfresh() {
    pending_.clear();
    told_ = {};
    isUnsayable_ = false;
}

void Recovery::drawingChanges() {
    log_.close();
    startAfresh();
    hasOlderSteps_ = hasFailed_ = false;
}

void Recovery::commandBegins(const db::Drawing* drawing, const std::string& name) {
    running_ = name;
    before_ = lastLine(session_.line().takeScript());
    if (!drawing || isRepeating_) return;
    const SessionState found = stateOf(session_);
    before_.insert(0, commandsBetween(told_, found) + selectionForms(session_.pickFirst));
    isBeforeSayable_ = canBeTold(session_.pickFirst.members()) &&
                       (found.previous == told_.previous || canBeTold(found.previous));
}

// What changed nothing counts as well, since later commands may go on from it; but not what ended by a
// refused answer, as a script would.
void Recovery::commandEnds(const db::Drawing* drawing, ed::CommandEnd end) {
    const bool isAsInFile = drawing && !drawing->isModified();
    const bool isSaved = isAsInFile && (running_ == "SAVE" || running_ == "SAVEAS");
    hasOlderSteps_ = hasOlderSteps_ || isSaved;
    if (isSaved || (isAsInFile && hasOlderSteps_ && takesBack(running_))) {
        log_.close();
        startAfresh();
    }
    const bool stands =
        end == ed::CommandEnd::changed || (end == ed::CommandEnd::unchanged && !session_.line().wasRefused());
    const std::string inputs = before_ + session_.line().takeScript();
    if (!stands || !drawing || isRepeating_ || isLeftOut(running_) || !os::isFile(drawing->path())) return;
    note(*drawing, inputs);
}

void Recovery::note(const db::Drawing& drawing, const std::string& inputs) {
    const Outcome written = write(drawing, inputs);
    if (written && log_.isBegun()) hasFailed_ = false;
    if (written) return;
    isUnsayable_ = true; // the log has a hole
    if (!std::exchange(hasFailed_, true) && onFailure) onFailure(written.error());
}

// A script can't undo what is older than the log, nor name what has no name.
Outcome Recovery::write(const db::Drawing& drawing, const std::string& inputs) {
    const bool hasWorkToLose = drawing.isModified() || log_.isBegun();
    const bool undoesOlder = hasOlderSteps_ && takesBack(running_);
    if (undoesOlder && !hasWorkToLose) return {}; // it is as in the file again
    isUnsayable_ = isUnsayable_ || undoesOlder || !isBeforeSayable_;
    pending_.push_back(inputs);
    told_ = stateOf(session_);
    if (!hasWorkToLose) return {};
    const bool isOnOtherFile = !log_.isBegun() && drawing.isFileChangedByOthers();
    if (isUnsayable_ || isOnOtherFile) return keepCopy(drawing);
    Outcome written;
    for (const std::string& each : std::exchange(pending_, {}))
        if (written) written = log_.add(drawing.path(), each);
    return written;
}

Outcome Recovery::keepCopy(const db::Drawing& drawing) {
    const Outcome written = log_.keepCopy(drawing);
    if (!written) return written;
    startAfresh();
    hasOlderSteps_ = true;
    return {};
}

// Commands that could only be repeated in part are not in the log that is begun from there.
Outcome Recovery::repeat(const LeftLog& log) {
    isRepeating_ = true;
    Outcome done = log.copy.empty() ? Outcome{} : takeCopy(log.copy);
    ed::ScriptSource script{log.script, RecoveryLog::pathFor(session_.drawing()->path())};
    if (done && ed::CommandRunner{session_}.run(script) == ed::RunEnd::failed)
        done = Outcome::failure(session_.line().failure());
    isRepeating_ = false;
    session_.line().takeScript();
    if (done) done = log_.goOnWith(session_.drawing()->path(), log);
    told_ = stateOf(session_);
    hasOlderSteps_ = !log.copy.empty();
    isUnsayable_ = !done;
    return done;
}

/// What is in the copy are unsaved changes of the drawing.
Outcome Recovery::takeCopy(const std::string& copy) {
    auto drawing = db::Drawing::read(copy);
    if (!drawing) return Outcome::failure(drawing.error());
    (*drawing)->rename(session_.drawing()->path());
    (*drawing)->markChanged();
    session_.setDrawing(std::move(*drawing));
    return {};
}

} // namespace qx::desktop
