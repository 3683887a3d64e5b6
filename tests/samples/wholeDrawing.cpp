// One alignment of everything in a sample drawing at once.
#include "samples/Program.h"
#include "samples/TagList.h"
#include "samples/changes.h"

#include <algorithm>
#include <cmath>

namespace {
using namespace qx::tests;

class WholeDrawing : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        put(folder / "all.scr", "KV_PositionAlign O L 50 ALL\n\n-100,0\n");
        const Outcome outcome =
            runProgram(folder, '\'' + drawing + "' -s all.scr -o all.dxf --report all.json");
        ASSERT_EQ(outcome.exit, 0) << outcome.errors;
    }
    ReportedChanges reported() const { return ReportedChanges{contentOf(folder / "all.json")}; }

    const std::string drawing = samplePath(GetParam() + ".dxf");
    TemporaryFolder folder;
};

TEST_P(WholeDrawing, leavesLockedLayersAloneAndSaysSo) {
    const TagList before{contentOf(drawing)}, after{contentOf(folder / "all.dxf")};
    const std::set<std::string> locked = before.lockedEntities();
    ASSERT_FALSE(locked.empty());
    const std::set<std::string> moved = movedObjects(before, after);
    const ReportedChanges report = reported();
    for (const std::string& handle : locked) {
        EXPECT_FALSE(moved.contains(handle)) << handle;
        const auto stay = std::ranges::find(report.stayed, handle, &Stay::handle);
        ASSERT_NE(stay, report.stayed.end()) << handle;
        EXPECT_EQ(stay->reason, "eOnLockedLayer") << handle;
    }
}

TEST_P(WholeDrawing, bringsEveryOtherLeftEdgeToTheLine) {
    std::size_t aligned = 0;
    for (const Change& each : reported().changed) {
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
