#include "ed/hostCommands.h"

#include "accmd.h"
#include "ed/prompts.h"
#include "rx/CommandStack.h"

namespace qx::ed {
namespace {

struct HostCommand {
    const ACHAR* name;
    AcRxFunctionPtr function;
    Adesk::Int32 flags;
};

// These change no object themselves, or take changes back: they make no undo step of their own.
constexpr Adesk::Int32 stepless = ACRX_CMD_SESSION | ACRX_CMD_NO_UNDO_MARKER;

constexpr HostCommand commands[] = {
    {L"OPEN", openCommand, stepless},
    {L"SAVE", saveCommand, stepless},
    {L"SAVEAS", saveAsCommand, stepless},
    {L"QUIT", quitCommand, stepless},
    {L"U", undoCommand, stepless},
    {L"UNDO", undoManyCommand, stepless},
    {L"REDO", redoCommand, stepless},
    {L"ERASE", eraseCommand, ACRX_CMD_USEPICKSET},
    {L"GROUP", groupCommand, ACRX_CMD_USEPICKSET},
    {L"LIST", listCommand, ACRX_CMD_USEPICKSET},
    {L"SELECT", selectCommand, ACRX_CMD_NO_UNDO_MARKER},
    {L"ID", identifyPointCommand, ACRX_CMD_NO_UNDO_MARKER},
    {L"SETVAR", setVariableCommand, stepless},
    {L"ARX", modulesCommand, stepless},
};

} // namespace

void registerHostCommands() {
    for (const HostCommand& each : commands)
        rx::commandStack().addCommand(L"QX_HOST", each.name, nullptr, each.flags, each.function);
}

void say(Session& session, const std::string& sentence) { session.line().transcript.sentence(sentence); }

bool confirms(Session& session, const std::string& question) {
    const auto answer = askKeyword(
        session.line(), {.prompt = question + " [是(Y)/否(N)] <N>: ", .keywords = Keywords{"Yes No"}});
    return answer.value == "Yes";
}

bool hasDrawing(Session& session) {
    if (!session.drawing()) session.line().refuse("没有打开的图形。", "no drawing is open");
    return session.drawing() != nullptr;
}

} // namespace qx::ed
