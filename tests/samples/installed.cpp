// The installed tree works from where it was put, without the build folder's help.
#include "samples/Program.h"

namespace {
using namespace qx::tests;

TEST(Installed, runsASampleScript) {
    const TemporaryFolder folder;
    const Outcome install =
        runIn(folder, "'" QX_CMAKE "' --install '" QX_BUILD_DIR "' --prefix \"$PWD/first\"");
    ASSERT_EQ(install.exit, 0) << install.errors;
    // A tree that is moved must still find its parts.
    std::filesystem::rename(folder / "first", folder / "moved");
    const Outcome run = runIn(folder, "moved/bin/qxhost moved/share/QX_GroupAlignment/samples/floorplan.dxf"
                                      " -s moved/share/QX_GroupAlignment/samples/floorplan-groups-top.scr");
    EXPECT_EQ(run.exit, 0) << run.errors;
    EXPECT_EQ(troublesIn(run), "");
    EXPECT_EQ(run.transcript, contentOf(QX_SOURCE_DIR "/tests/data/transcripts/floorplan-groups-top.txt"));
    EXPECT_NE(contentOf(folder / "moved/share/doc/QX_GroupAlignment/README.md"), "");
}

} // namespace
