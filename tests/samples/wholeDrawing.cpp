// One alignment of everything in a sample drawing at once.
#include "samples/Program.h"
#include "samples/TagList.h"
#include "samples/changes.h"

namespace {
using namespace qx::tests;

class WholeDrawing : public testing::TestWithParam<std::string> {};

TEST_P(WholeDrawing, comesToTheLineButForLockedLayers) {
    const TemporaryFolder folder;
    const std::string drawing = samplePath(GetParam() + ".dxf");
    put(folder / "all.scr", "KV_PositionAlign O L 50 ALL\n\n-100,0\n");
    const Outcome outcome = runProgram(folder, '\'' + drawing + "' -s all.scr -o all.dxf --report all.json");
    ASSERT_EQ(outcome.exit, 0) << outcome.errors;
    const ReportedChanges report{contentOf(folder / "all.json")};

    const TagList before{contentOf(drawing)}, after{contentOf(folder / "all.dxf")};
    std::set<std::string> stayed;
    for (const Stay& each : report.stayed)
        if (each.reason == "eOnLockedLayer") stayed.insert(each.handle);
    EXPECT_FALSE(stayed.empty());
    EXPECT_EQ(stayed, before.lockedEntities());
    for (const std::string& handle : movedObjects(before, after))
        EXPECT_FALSE(stayed.contains(handle)) << handle;

    std::size_t aligned = 0;
    for (const Change& each : report.changed) {
        EXPECT_NEAR(each.before.min[1], each.after.min[1], 1e-9) << each.handle;
        EXPECT_NEAR(each.before.max[0] - each.before.min[0], each.after.max[0] - each.after.min[0], 1e-6)
            << each.handle;
        if (each.className == "AcDbAttribute") continue; // goes with its block reference
        EXPECT_NEAR(each.after.min[0], -50, 1e-9) << each.handle << ' ' << each.className;
        ++aligned;
    }
    EXPECT_GT(aligned, 100U);
}

INSTANTIATE_TEST_SUITE_P(Of, WholeDrawing,
                         testing::Values(std::string{"siteplan"}, std::string{"floorplan"},
                                         std::string{"schematic"}),
                         [](const auto& drawing) { return drawing.param; });

} // namespace
