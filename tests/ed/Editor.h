// A session over a drawing in memory, for tests that run whole scripts: what the command line shows, what
// saving would write, and how it ended.
#pragma once

#include "accmd.h"
#include "ed/CommandRunner.h"
#include "ed/ScriptSource.h"

#include <functional>
#include <string>
#include <string_view>

namespace qx::tests {

struct ScriptRun {
    ed::RunEnd end;
    std::string transcript; ///< of this script
    std::string failure;    ///< why it failed; empty when it did not
    std::string bytes;      ///< what saving would write now; empty without a drawing
};

class Editor {
public:
    /// Throws when the text is no drawing.
    explicit Editor(const std::string& dxfText);
    ~Editor();

    /// Runs a script called "test.scr".
    ScriptRun run(std::string_view script);
    /// Runs the body as a command called BODY with these flags, fed with `answers`.
    ScriptRun runBody(std::function<void()> body, std::string_view answers = {}, int flags = ACRX_CMD_MODAL);
    /// The name BODY means this from now on, also for scripts.
    void define(std::function<void()> body, int flags = ACRX_CMD_MODAL);

    db::Drawing& drawing() { return *session.drawing(); }

    std::string transcript; ///< since the beginning
    ed::Session session;
};

/// Answers like a script, and is asked again like a person.
class Person : public ed::ScriptSource {
public:
    using ScriptSource::ScriptSource;
    bool isInteractive() const override { return true; }
};

/// A failed check of what a rule of the host demands after any script: nothing open, no rule broken.
void expectInOrder(Editor& editor);

} // namespace qx::tests
