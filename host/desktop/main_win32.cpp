#include "desktop/MainWindow_win32.h"
#include "desktop/dialogAnswers_win32.h"
#include "ed/ScriptSource.h"
#include "os/crashes.h"
#include "os/terminal.h"
#include "rx/ModuleLoader.h"

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace qx::desktop {
namespace {

constexpr const char* usage = "usage: qxdesk [DRAWING.dxf] [-s SCRIPT]\n";

struct Options {
    std::string drawing, script;
};

std::optional<Options> parsed(const std::vector<std::string>& arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const bool isScript = arguments[i] == "-s" || arguments[i] == "--script";
        std::string& place = isScript ? options.script : options.drawing;
        if (isScript && ++i == arguments.size()) return std::nullopt;
        if (!place.empty() || (!isScript && arguments[i].starts_with('-'))) return std::nullopt;
        place = arguments[i];
    }
    return options;
}

/// The program from its first message to its last.
class Program {
public:
    explicit Program(Options options)
        : options_{std::move(options)}, session_{[this](std::string_view text) {
              window_.pane().append(text);
          }},
          desk_{session_, [this] { return window_.handleNext(); }}, dialogs_{session_, desk_} {
        session_.opened = [this](const db::Drawing& drawing) { noteOpened(drawing); };
        session_.progress = [this](std::string_view job, std::uint64_t done, std::uint64_t total) {
            window_.showProgress(job, done, total);
        };
        session_.variables().force("CMDDIA", 1);
        desk_.mayClose = [this] { return window_.mayClose(); };
        desk_.recovery().onFailure = [this](const std::string& sentence) {
            session_.line().note("无法写入恢复记录", sentence);
        };
        window_.attach(session_, desk_);
    }

    int run() {
        const Outcome loaded = rx::moduleLoader().load(os::programFolder() + "/QX_GroupAlignment.arx");
        if (!loaded) session_.line().note("无法加载模块", loaded.error());
        if (!options_.drawing.empty()) open(options_.drawing);
        if (hasLeft_) recoverWhatWasLeft();
        if (!options_.script.empty()) runScript();
        while (!session_.quitRequested && !desk_.isOver()) {
            if (hasLeft_) recoverWhatWasLeft();
            ed::CommandRunner{session_}.run(desk_);
        }
        desk_.recovery().drop();
        rx::moduleLoader().setDrawingOpen(false);
        rx::moduleLoader().unloadAll();
        return 0;
    }

private:
    void open(const std::string& path) {
        auto drawing = db::Drawing::read(path, [this](std::uint64_t done, std::uint64_t total) {
            window_.showProgress("loading", done, total);
        });
        if (!drawing) return window_.tells("无法打开图形: " + drawing.error());
        session_.setDrawing(std::move(*drawing));
        desk_.follow();
        desk_.tellFindings();
    }

    // Between commands there is time to ask what shall become of what was left.
    void noteOpened(const db::Drawing& drawing) {
        if (desk_.recovery().isRepeating()) return;
        hasLeft_ = RecoveryLog::find(drawing.path()).has_value();
        if (hasLeft_) desk_.pause();
    }

    void recoverWhatWasLeft() {
        hasLeft_ = false;
        window_.showName();
        const std::string path = session_.drawing()->path();
        // A script may have gone on with the drawing; then our own log stands in the place of the other.
        const auto left = RecoveryLog::find(path);
        if (!left)
            return session_.line().transcript.sentence("上次没有保存的命令没有恢复，保存在图形旁边，名为 " +
                                                       path + ".recovery-1.scr (或更大的编号)。");
        const std::string work =
            left->commands > 0 ? std::to_string(left->commands) + " 个命令" : std::string{"修改"};
        if (!left->fits)
            window_.tells("图形在上次没有正常结束之后被修改过，无法恢复。\n上次的命令保存在 " +
                          putAside(path));
        else if (!window_.asks("上次程序没有正常结束，" + path + " 有 " + work + "没有保存。\n是否恢复?"))
            session_.line().transcript.sentence("没有恢复。上次的命令保存在 " + putAside(path));
        else if (const Outcome done = desk_.recovery().repeat(*left); !done)
            window_.tells("没有全部恢复: " + done.error() + "\n上次的命令保存在 " + putAside(path));
        else
            session_.line().transcript.sentence("已恢复 " + work + "，请检查后保存。");
    }

    static std::string putAside(const std::string& drawing) {
        const auto aside = RecoveryLog::putAside(drawing);
        return aside ? *aside : aside.error();
    }

    void runScript() {
        const auto bytes = os::readFile(options_.script);
        if (!bytes) return window_.tells(bytes.error());
        // As commands of their own, so that they are repeated with what the script did.
        run("SETVAR CMDDIA 0\n", "qxdesk");
        run(std::string{bytes->view()}, options_.script);
        run("SETVAR CMDDIA 1\n", "qxdesk");
    }

    void run(std::string text, const std::string& name) {
        ed::ScriptSource script{std::move(text), name};
        if (ed::CommandRunner{session_}.run(script) == ed::RunEnd::failed)
            session_.line().transcript.sentence("脚本失败: " + session_.line().failure());
    }

    Options options_;
    MainWindow window_;
    ed::Session session_;
    Desk desk_;
    DialogAnswers dialogs_;
    bool hasLeft_ = false; ///< beside the drawing that is open, when it was opened
};

} // namespace
} // namespace qx::desktop

int main(int count, char** arguments) {
    using namespace qx::desktop;
    qx::os::endOnCrash();
    auto options = parsed(qx::os::programArguments(count, arguments));
    if (!options) {
        std::fputs(usage, stderr);
        return 1;
    }
    Program program{std::move(*options)};
    // Freeing a large drawing object by object would only keep the person waiting.
    std::_Exit(program.run());
}
