// What was done to a drawing since it was last saved, beside the drawing: the inputs of each finished
// command, as a script. It is there while the drawing has changes and goes with them; one that is found when
// a drawing is opened was left by a program that ended before its time, and can be run on the untouched file.
#pragma once

#include "db/Drawing.h"
#include "os/Result.h"
#include "os/files.h"

#include <cstddef>
#include <optional>
#include <string>

namespace qx::desktop {

/// A log that somebody left.
struct LeftLog {
    std::string script;       ///< of the commands that were finished, each with a mark behind it
    std::size_t commands = 0; ///< how many
    std::string copy;         ///< the file that they were done to; empty: the drawing itself
    bool fits = false;        ///< these files are still as they were
};

class RecoveryLog {
public:
    /// "plan.dxf.recovery.scr"
    static std::string pathFor(const std::string& drawing) { return drawing + ".recovery.scr"; }
    static std::string copyFor(const std::string& drawing) { return drawing + ".recovery.dxf"; }
    /// Nothing when there is none, nothing was finished, or a running program still writes it.
    static std::optional<LeftLog> find(const std::string& drawing);
    /// Gives a log, and its copy, names under which they are in nobody's way; that of the log. Refused while
    /// a running program writes it.
    static Result<std::string> putAside(const std::string& drawing);

    RecoveryLog() = default;
    /// The log stays where it is: only close() says that nothing is to be recovered.
    ~RecoveryLog() = default;
    RecoveryLog(const RecoveryLog&) = delete;
    RecoveryLog& operator=(const RecoveryLog&) = delete;

    // Whatever stands in the place of the log and was not made here is put aside first.

    /// The inputs of a command that was finished; on the disk when this comes back. The first one makes the
    /// log, for the file as it is then.
    Outcome add(const std::string& drawing, const std::string& inputs);
    /// Writes a copy of the drawing, from which the log goes on.
    Outcome keepCopy(const db::Drawing& drawing);
    /// Goes on with a log that was left, as if its commands had just been done.
    Outcome goOnWith(const std::string& drawing, const LeftLog& log);
    bool isBegun() const { return file_.has_value(); }
    /// Nothing is to be recovered any more.
    void close();

private:
    Outcome claim(const std::string& drawing);
    Outcome begin(const std::string& drawing, const std::string& copy, const std::string& script);

    std::string drawing_; ///< whose log is ours; empty: there is none yet
    std::optional<os::AppendedFile> file_;
};

} // namespace qx::desktop
