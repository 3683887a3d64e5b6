// Runs commands: finds them on the command stack by what is typed, gives each its undo step and the lock of
// the drawing, and sees to it that a command that breaks the host's rules leaves nothing behind: it is rolled
// back, and a sentence says why.
#pragma once

#include "ed/Session.h"
#include "ed/forms.h"
#include "os/Result.h"

#include <functional>
#include <string>

namespace qx::ed {

enum class RunEnd {
    sourceEnded,
    quit,
    failed ///< the source can't go on; the session's command line knows why until the next run
};

class QX_HOST_API CommandRunner {
public:
    explicit CommandRunner(Session& session) : session_{session} {}

    /// Reads and runs commands until the source ends, fails, or the person quits.
    RunEnd run(InputSource& source);

private:
    using Body = std::function<Outcome()>;

    void runInput(const Input& input);
    void runCommand(const std::string& typed);
    void selectFirst(const TypedSelection& selection);
    void callFunction(const std::string& form);
    void perform(const std::string& name, int flags, const Body& body);
    CommandEnd settle(const std::string& name, db::Drawing* step, const Outcome& outcome);
    void complain(const std::string& sentence, const std::string& reason);

    Session& session_;
};

} // namespace qx::ed
