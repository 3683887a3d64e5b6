#include "fuzz/ScriptedSession.h"

#include "accmd.h"
#include "ed/CommandRunner.h"
#include "ed/ScriptSource.h"
#include "fuzz/fuzzing.h"
#include "rx/ModuleLoader.h"

#include <utility>

namespace qx::tests {
namespace {

bool loadModule() {
    const Outcome loaded = rx::moduleLoader().load(QX_BIN_DIR "/QX_GroupAlignment.arx");
    demand(static_cast<bool>(loaded), "the module is loaded");
    return true;
}

} // namespace

ScriptedSession::ScriptedSession(std::unique_ptr<db::Drawing> drawing) : session_{[](std::string_view) {}} {
    [[maybe_unused]] static const bool isLoaded = loadModule();
    for (const ACHAR* name : {L"OPEN", L"SAVE", L"SAVEAS", L"ARX"}) acedRegCmds->removeCmd(L"QX_HOST", name);
    session_.observer = &report_;
    session_.setDrawing(std::move(drawing));
}

void ScriptedSession::run(std::string_view script) {
    ed::ScriptSource source{std::string{script}, "fuzz.scr"};
    const ed::RunEnd end = ed::CommandRunner{session_}.run(source);
    demand((end == ed::RunEnd::failed) == session_.line().hasFailed(), "a failed script says why");
    demand(session_.violations == 0, "no command breaks a rule of the host");
    demand(drawing().openCount() == 0, "nothing is left open");
    static_cast<void>(report_.toJson(&drawing()));
}

void demandGoodOrder(ScriptedSession& session, std::string_view original) {
    db::Drawing& drawing = session.drawing();
    const std::string saved = drawing.toBytes();
    const auto reread = db::Drawing::fromBytes(saved, "saved.dxf");
    demand(static_cast<bool>(reread), "what was saved can be read");
    demand((*reread)->toBytes() == saved, "what was saved is saved again as it is");
    while (drawing.history().stepsDone() > 0) drawing.history().undo();
    demand(drawing.toBytes() == original, "with all taken back the drawing is what it was");
}

} // namespace qx::tests
