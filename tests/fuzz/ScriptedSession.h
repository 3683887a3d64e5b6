// One drawing, one script, the module and the report: what qxhost does with them, in memory. Commands that
// would touch files are taken away.
#pragma once

#include "ed/Report.h"
#include "ed/Session.h"

#include <memory>
#include <string>
#include <string_view>

namespace qx::tests {

class ScriptedSession {
public:
    explicit ScriptedSession(std::unique_ptr<db::Drawing> drawing);

    /// Ends the program when a command breaks a rule of the host.
    void run(std::string_view script);
    db::Drawing& drawing() { return *session_.drawing(); }

private:
    ed::Report report_;
    ed::Session session_;
};

/// Whatever a script may have done: the result can be read and is written again as it is, and with all steps
/// taken back the drawing is what it was.
void demandGoodOrder(ScriptedSession& session, std::string_view original);

} // namespace qx::tests
