// The pictures in the documents are what the program draws.
#include "samples/Program.h"

namespace {
using namespace qx::tests;

TEST(DocumentedPictures, areDrawnByTheProgram) {
    const TemporaryFolder folder;
    std::string scripts;
    for (const std::string& name : sampleScripts("floorplan"))
        scripts += contentOf(samplePath(name + ".scr"));
    put(folder / "all.scr", scripts);
    put(folder / "none.scr", "");
    const std::string drawing = '\'' + samplePath("floorplan.dxf") + '\'';
    EXPECT_EQ(runProgram(folder, drawing + " -s none.scr --svg before.svg").exit, 0);
    EXPECT_EQ(runProgram(folder, drawing + " -s all.scr --svg after.svg").exit, 0);
    expectKept("docs/floorplan-before.svg", contentOf(folder / "before.svg"));
    expectKept("docs/floorplan-after.svg", contentOf(folder / "after.svg"));
}

} // namespace
