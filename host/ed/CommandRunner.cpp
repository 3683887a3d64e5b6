#include "ed/CommandRunner.h"

#include "accmd.h"
#include "os/encoding.h"
#include "rx/ModuleLoader.h"

#include <utility>

namespace qx::ed {
namespace {

constexpr const char* commandPrompt = "命令: ";

// While a command runs: what the system variables tell, and the flags that decide what it may see.
class Running {
public:
    Running(Session& session, const std::string& name, int flags) : session_{session} {
        session.line().beginCommand(name);
        session.variables().force("CMDACTIVE", 1);
        session.variables().force("CMDNAMES", name);
        session.commandFlags = flags;
        const bool seesPickFirst = (flags & (ACRX_CMD_USEPICKSET | ACRX_CMD_REDRAW)) != 0;
        if (!seesPickFirst) session.pickFirst.clear();
    }
    ~Running() {
        session_.endProgress();
        session_.commandFlags = -1;
        session_.variables().force("CMDNAMES", std::string{});
        session_.variables().force("CMDACTIVE", 0);
        session_.line().endCommand();
        session_.takeRules();
        session_.reapedSets += session_.sets().freeAll();
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

private:
    Session& session_;
};

// The name in `(name)`; functions take no arguments here.
std::string functionName(const std::string& form) {
    const std::size_t begin = form.find_first_not_of(" (");
    const std::size_t end = form.find_first_of(" )", begin);
    return begin == std::string::npos ? std::string{} : form.substr(begin, end - begin);
}

} // namespace

RunEnd CommandRunner::run(InputSource& source) {
    CommandLine& line = session_.line();
    line.forgetFailure();
    line.push(source);
    for (;;) {
        const Input input = line.ask(Ask::command, commandPrompt);
        if (input.kind == Input::Kind::end) break;
        runInput(input);
        if (line.hasFailed() || session_.quitRequested) break;
    }
    line.pop();
    if (line.hasFailed()) return RunEnd::failed;
    return session_.quitRequested ? RunEnd::quit : RunEnd::sourceEnded;
}

void CommandRunner::runInput(const Input& input) {
    if (input.kind == Input::Kind::cancel) session_.pickFirst.clear();
    if (input.kind != Input::Kind::text) return;
    if (const auto selection = parseSelection(input.text); selection && session_.drawing())
        selectFirst(*selection);
    else if (input.text.starts_with('('))
        callFunction(input.text);
    else
        runCommand(input.text);
}

void CommandRunner::runCommand(const std::string& typed) {
    const auto command = rx::commandStack().find(os::toWide(typed));
    if (!command)
        return complain("未知命令“" + abridged(typed) + "”。", "unknown command \"" + abridged(typed) + '"');
    if (command->isStale())
        return complain("命令 " + typed + " 所属的模块已卸载，无法执行；请重新加载该模块。",
                        command->run().error());
    const int flags = command->commandFlags();
    perform(os::toUtf8(command->globalName()), flags, [&] { return command->run(); });
}

void CommandRunner::selectFirst(const TypedSelection& selection) {
    db::Drawing& drawing = *session_.drawing();
    std::vector<db::Record*> records;
    for (const std::uint64_t handle : selection.handles)
        if (db::Record* record = drawing.find(handle); record && drawing.isSelectable(record))
            records.push_back(record);
    const bool goesOn = selection.adds && session_.pickFirst.drawing() == &drawing;
    if (!goesOn) session_.pickFirst = RecordSet{&drawing};
    session_.pickFirst.add(records);
}

void CommandRunner::callFunction(const std::string& form) {
    const std::string name = functionName(form);
    rx::LispAnswer answer;
    perform(form, ACRX_CMD_USEPICKSET | ACRX_CMD_REDRAW, [&] {
        answer = rx::moduleLoader().invoke(os::toWide(name));
        if (!answer.defined) complain("; 错误: 函数未定义: " + name, "undefined function \"" + name + '"');
        return answer.outcome;
    });
    if (answer.defined && !answer.text.empty()) session_.line().transcript.sentence(answer.text);
}

void CommandRunner::perform(const std::string& name, int flags, const Body& body) {
    db::Drawing* drawing = session_.drawing();
    const bool needsDrawing = (flags & ACRX_CMD_SESSION) == 0;
    if (needsDrawing && !drawing) return complain("没有打开的图形。", "no drawing is open");
    const bool isStep = drawing && (flags & ACRX_CMD_NO_UNDO_MARKER) == 0;

    const Running running{session_, name, flags};
    if (session_.observer) session_.observer->commandBegins(drawing, name);
    if (isStep) drawing->history().begin(name);
    if (needsDrawing) drawing->setLocked(true);
    const Outcome outcome = body();
    const CommandEnd end = settle(name, isStep ? drawing : nullptr, outcome);
    if (session_.observer) session_.observer->commandEnds(session_.drawing(), end);
    if (session_.commandDone) session_.commandDone();
}

// Closes what is open and the undo step, or takes the step back when the command may not stand.
CommandEnd CommandRunner::settle(const std::string& name, db::Drawing* step, const Outcome& outcome) {
    db::Drawing* drawing = session_.drawing();
    const std::size_t left = drawing ? drawing->closeAll() : 0;
    if (drawing) drawing->setLocked(false);
    const std::size_t deleted = drawing ? drawing->takeDeletions() : 0;
    const bool stands = outcome && left == 0 && deleted == 0 && !session_.line().hasFailed();
    CommandEnd end = stands ? CommandEnd::unchanged : CommandEnd::rolledBack;
    if (step && stands && step->history().end()) end = CommandEnd::changed;
    if (step && !stands) step->history().rollBack();
    if (left > 0 || deleted > 0 || !outcome) ++session_.violations;
    if (!outcome) session_.line().refuse(name + " 因内部错误而中断", outcome);
    if (left > 0)
        complain("命令 " + name + " 结束时有 " + std::to_string(left) + " 个对象没有关闭，该命令已撤消。",
                 name + " left " + std::to_string(left) + " objects open");
    if (deleted > 0)
        complain("命令 " + name + " 删除了 " + std::to_string(deleted) + " 个属于图形的对象，该命令已撤消。",
                 name + " deleted " + std::to_string(deleted) + " objects that belong to the drawing");
    return end;
}

void CommandRunner::complain(const std::string& sentence, const std::string& reason) {
    session_.line().refuse(sentence, reason);
}

} // namespace qx::ed
