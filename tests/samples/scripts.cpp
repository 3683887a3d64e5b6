// Every sample script, run on its drawing: what comes out is what is kept, and holds what any alignment must
// hold.
#include "samples/Program.h"
#include "samples/TagList.h"
#include "samples/changes.h"

#include <algorithm>

namespace {
using namespace qx::tests;

bool isTurning(const std::string& name) {
    return contentOf(samplePath(name + ".scr")).find("KV_ObjectAlign") != std::string::npos;
}

std::vector<std::string> positioningScripts() {
    std::vector<std::string> names = sampleScripts();
    std::erase_if(names, isTurning);
    return names;
}

class SampleScript : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        const Outcome outcome = runProgram(folder, quoted(drawing) + " -s " + quoted(script) +
                                                       " -o once.dxf --report report.json");
        ASSERT_EQ(outcome.exit, 0) << outcome.errors;
        EXPECT_EQ(troublesIn(outcome), "");
        transcript = outcome.transcript;
    }

    static std::string quoted(const std::string& path) { return '\'' + path + '\''; }
    ReportedChanges reported() const { return ReportedChanges{contentOf(folder / "report.json")}; }
    bool turns() const { return isTurning(name); }

    const std::string name = GetParam();
    const std::string drawing = samplePath(drawingOf(name) + ".dxf");
    const std::string script = samplePath(name + ".scr");
    std::string transcript;
    TemporaryFolder folder;
};

TEST_P(SampleScript, saysWhatIsKept) { expectKept("tests/data/transcripts/" + name + ".txt", transcript); }

TEST_P(SampleScript, movesWhatIsKept) {
    expectKept("tests/data/changes/" + name + ".txt", reported().list());
}

TEST_P(SampleScript, rewritesOnlyPlacesOfWhatItReports) {
    const TagList before{contentOf(drawing)}, after{contentOf(folder / "once.dxf")};
    const std::set<std::string> moved =
        movedObjects(before, after, turns() ? Rewrites::anglesAsWell : Rewrites::coordinates);
    EXPECT_FALSE(moved.empty());
    EXPECT_EQ(moved, reported().movedHandles());
    for (const std::string& handle : before.lockedEntities()) EXPECT_FALSE(moved.contains(handle)) << handle;
}

// Turning onto a line is another matter: what is put beyond it comes back the second time.
class PositioningScript : public SampleScript {};

TEST_P(PositioningScript, hasNothingLeftToDoTheSecondTime) {
    const Outcome again = runProgram(folder, "once.dxf -s " + quoted(script) + " -o twice.dxf");
    ASSERT_EQ(again.exit, 0) << again.errors;
    const TagList once{contentOf(folder / "once.dxf")}, twice{contentOf(folder / "twice.dxf")};
    EXPECT_LE(greatestDifference(once, twice), 1e-9);
}

TEST_P(SampleScript, isUndoneToTheByteAndDoneAgain) {
    const std::size_t steps = reported().changingCommands();
    ASSERT_GT(steps, 0U);
    std::string longer = contentOf(script);
    for (std::size_t i = 0; i < steps; ++i) longer += "U\n";
    longer += "SAVEAS undone.dxf\n";
    for (std::size_t i = 0; i < steps; ++i) longer += "REDO\n";
    longer += "SAVEAS redone.dxf\n";
    put(folder / "longer.scr", longer);
    const Outcome outcome = runProgram(folder, quoted(drawing) + " -s longer.scr");
    ASSERT_EQ(outcome.exit, 0) << outcome.errors << outcome.transcript;
    EXPECT_TRUE(contentOf(folder / "undone.dxf") == contentOf(drawing));
    EXPECT_TRUE(contentOf(folder / "redone.dxf") == contentOf(folder / "once.dxf"));
}

std::string testName(const testing::TestParamInfo<std::string>& info) {
    std::string name = info.param;
    std::ranges::replace(name, '-', '_');
    return name;
}
INSTANTIATE_TEST_SUITE_P(Of, SampleScript, testing::ValuesIn(sampleScripts()), testName);
INSTANTIATE_TEST_SUITE_P(Of, PositioningScript, testing::ValuesIn(positioningScripts()), testName);

} // namespace
