// The pictures in the documents are what the program draws.
#include "samples/Program.h"

namespace {
using namespace qx::tests;

class DocumentedPictures : public testing::TestWithParam<std::string> {};

TEST_P(DocumentedPictures, areDrawnByTheProgram) {
    const TemporaryFolder folder;
    std::string scripts;
    for (const std::string& name : sampleScripts(GetParam())) scripts += contentOf(samplePath(name + ".scr"));
    put(folder / "all.scr", scripts);
    put(folder / "none.scr", "");
    const std::string drawing = '\'' + samplePath(GetParam() + ".dxf") + '\'';
    EXPECT_EQ(runProgram(folder, drawing + " -s none.scr --svg before.svg").exit, 0);
    EXPECT_EQ(runProgram(folder, drawing + " -s all.scr --svg after.svg").exit, 0);
    expectKept("docs/" + GetParam() + "-before.svg", contentOf(folder / "before.svg"));
    expectKept("docs/" + GetParam() + "-after.svg", contentOf(folder / "after.svg"));
}

INSTANTIATE_TEST_SUITE_P(Of, DocumentedPictures,
                         testing::Values(std::string{"floorplan"}, std::string{"schematic"}),
                         [](const auto& drawing) { return drawing.param; });

} // namespace
