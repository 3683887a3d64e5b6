// Sees to it that what a session does to a drawing can be repeated when the program ends before its time:
// each finished command goes to the log beside the drawing, as the script of its answers, behind whatever it
// found and the log doesn't bring about. Where a script can't say what was done, or the file is no longer the
// one that was opened, a copy of the drawing takes its place.
#pragma once

#include "desktop/RecoveryLog.h"
#include "desktop/SessionState.h"
#include "ed/Session.h"

#include <functional>
#include <string>
#include <vector>

namespace qx::desktop {

class Recovery {
public:
    /// From now on the session's answers are kept.
    explicit Recovery(ed::Session& session);

    // What the session's observer hears.

    void drawingChanges();
    void commandBegins(const db::Drawing* drawing, const std::string& name);
    void commandEnds(const db::Drawing* drawing, ed::CommandEnd end);

    /// Runs what was left of an earlier session on the drawing that was just opened. The sentence when it
    /// could not be done to the end.
    Outcome repeat(const LeftLog& log);
    bool isRepeating() const { return isRepeating_; }
    /// Nothing is to be recovered: what was not saved was given up.
    void drop() { log_.close(); }
    /// Told when the log can't be written, once until it can.
    std::function<void(const std::string& sentence)> onFailure;

private:
    void startAfresh();
    void note(const db::Drawing& drawing, const std::string& inputs);
    Outcome write(const db::Drawing& drawing, const std::string& inputs);
    Outcome keepCopy(const db::Drawing& drawing);
    Outcome takeCopy(const std::string& copy);

    ed::Session& session_;
    RecoveryLog log_;
    std::vector<std::string> pending_; ///< inputs of commands before there was anything to lose
    SessionState told_;                ///< what the log, with those, brings about
    std::string running_;              ///< name of the command
    std::string before_;               ///< what is in the script before its name: what it finds
    bool isBeforeSayable_ = true;
    bool isRepeating_ = false;
    bool hasOlderSteps_ = false; ///< than what the log goes on from: what is undone may be one of them
    bool isUnsayable_ = false;   ///< something that a script can't say was done and is not in the log
    bool hasFailed_ = false;     ///< and that was told
};

} // namespace qx::desktop
