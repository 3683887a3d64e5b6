#include "ed/Editor.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

namespace qx::tests {
namespace {

std::function<void()> currentBody;
void callBody() { currentBody(); }

} // namespace

Editor::Editor(const std::string& dxfText) : session{[this](std::string_view text) { transcript += text; }} {
    auto drawing = db::Drawing::fromBytes(dxfText, "test.dxf");
    if (!drawing) throw std::runtime_error{drawing.error()};
    session.setDrawing(std::move(*drawing));
}

Editor::~Editor() {
    acedRegCmds->removeGroup(L"TEST");
    currentBody = {};
}

ScriptRun Editor::run(std::string_view script) {
    const std::size_t begin = transcript.size();
    ed::ScriptSource source{std::string{script}, "test.scr"};
    ScriptRun result{};
    result.end = ed::CommandRunner{session}.run(source);
    result.transcript = transcript.substr(begin);
    result.failure = session.line().failure();
    if (session.drawing()) result.bytes = session.drawing()->toBytes();
    return result;
}

void Editor::define(std::function<void()> body, int flags) {
    currentBody = std::move(body);
    acedRegCmds->removeGroup(L"TEST");
    acedRegCmds->addCommand(L"TEST", L"BODY", nullptr, flags, callBody);
}

ScriptRun Editor::runBody(std::function<void()> body, std::string_view answers, int flags) {
    define(std::move(body), flags);
    return run("BODY\n" + std::string{answers});
}

void expectInOrder(Editor& editor) {
    EXPECT_EQ(editor.session.violations, 0u) << editor.transcript;
    if (!editor.session.drawing()) return;
    EXPECT_EQ(editor.drawing().openCount(), 0u);
}

} // namespace qx::tests
