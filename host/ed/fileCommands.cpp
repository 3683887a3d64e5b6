#include "ed/hostCommands.h"
#include "ed/prompts.h"
#include "os/files.h"

namespace qx::ed {
namespace {

db::Progress progressOf(const Session& session, const char* job) {
    if (!session.progress) return {};
    return [&session, job](std::uint64_t done, std::uint64_t total) { session.progress(job, done, total); };
}

// A script has said what it wants; a person may not have thought of the changes.
bool mayDropChanges(Session& session) {
    const db::Drawing* drawing = session.drawing();
    if (!drawing || !drawing->isModified() || !session.line().isInteractive()) return true;
    return confirms(session, "图形有未保存的修改。是否放弃这些修改?");
}

bool saveTo(Session& session, const std::string& path) {
    const Outcome outcome = session.drawing()->save(path, os::Backup::keep, progressOf(session, "saving"));
    if (outcome) {
        session.drawing()->markSaved();
        say(session, "已保存到 " + path);
    } else
        session.line().refuse("无法保存到 " + path, outcome);
    return static_cast<bool>(outcome);
}

} // namespace

void openCommand() {
    Session& session = *Session::current();
    if (!mayDropChanges(session)) return;
    const auto name = askText(session.line(), {.prompt = "输入要打开的图形文件名: "});
    if (name.kind != Answered::value) return;
    auto drawing = db::Drawing::read(name.value, progressOf(session, "loading"));
    if (!drawing)
        return session.line().refuse("无法打开图形 " + name.value, Outcome::failure(drawing.error()));
    session.setDrawing(std::move(*drawing));
    say(session, "已打开 " + name.value);
}

void saveCommand() {
    Session& session = *Session::current();
    if (hasDrawing(session)) saveTo(session, session.drawing()->path());
}

void saveAsCommand() {
    Session& session = *Session::current();
    if (!hasDrawing(session)) return;
    const auto name = askText(session.line(), {.prompt = "图形另存为: "});
    if (name.kind != Answered::value) return;
    if (os::exists(name.value) && !confirms(session, "文件 " + name.value + " 已存在。是否替换?")) return;
    if (saveTo(session, name.value)) session.renameDrawing(name.value);
}

void quitCommand() {
    Session& session = *Session::current();
    session.quitRequested = mayDropChanges(session);
}

} // namespace qx::ed
