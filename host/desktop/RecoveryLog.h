// What was done to a drawing since it was last saved, beside the drawing: the inputs of each finished
// command, as a script. It is there while the drawing has changes and goes with them; one that is found when
// a drawing is opened was left by a program that ended before its time, and can be run on the untouched file.
#pragma once

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
    bool fits = false;        ///< the drawing is still the file that they were done to
};

class RecoveryLog {
public:
    /// "plan.dxf.recovery.scr"
    static std::string pathFor(const std::string& drawing) { return drawing + ".recovery.scr"; }
    /// Nothing when there is none, nothing was finished, or a running program still writes it.
    static std::optional<LeftLog> find(const std::string& drawing);
    /// Gives a log that doesn't fit a name under which it is in nobody's way; that name.
    static Result<std::string> putAside(const std::string& drawing);

    RecoveryLog() = default;
    /// The log stays where it is: only close() says that nothing is to be recovered.
    ~RecoveryLog() = default;
    RecoveryLog(const RecoveryLog&) = delete;
    RecoveryLog& operator=(const RecoveryLog&) = delete;

    /// The inputs of a command that was finished; on the disk when this comes back. The first one makes the
    /// log, for the file as it is then.
    Outcome add(const std::string& drawing, const std::string& inputs);
    /// Goes on with a log that was left, as if its commands had just been done.
    Outcome goOnWith(const std::string& drawing, const LeftLog& log);
    /// Nothing is to be recovered any more.
    void close();

private:
    Outcome begin(const std::string& drawing, const std::string& script);

    std::string path_; ///< empty: there is no log yet
    std::optional<os::AppendedFile> file_;
};

} // namespace qx::desktop
