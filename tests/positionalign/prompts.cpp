// A selection set that holds nothing, which no session gives.
#include "ed/Editor.h"
#include "ed/PromptStage.h"
#include "positionalign/command.h"
#include "tests/positionalign/Scene.h"

namespace qx::tests {
namespace {

TEST(Prompts, AnEmptySetIsSaidWhenAllWasAsked) {
    for (const char* inputs : {"O\nL\n4\nALL\n\n50,60\n", "O\nHD\nALL\n\n", "G\nC\nALL\n\n50,60\n"}) {
        SCOPED_TRACE(inputs);
        const Scene scene;
        Editor editor{scene.content.bytes()};
        editor.define(positionalign::runCommand);
        stage.setLength = 0;
        const ScriptRun run = editor.run("BODY\n" + std::string{inputs});
        stage = {};
        EXPECT_EQ(run.end, ed::RunEnd::sourceEnded) << run.failure;
        EXPECT_TRUE(run.transcript.ends_with("\n没有选中任何对象，未进行对齐处理！")) << run.transcript;
        EXPECT_EQ(run.transcript.find("所选对象未包含组"), std::string::npos);
        EXPECT_EQ(run.bytes, scene.content.bytes());
        expectInOrder(editor);
    }
}
} // namespace
} // namespace qx::tests
