// What is refused: what can't be opened at all, and every request of every alignment made to fail once.
#include "tests/objectalign/Job.h"

namespace qx::tests {
using namespace drawings;
namespace {

const char* const objects[] = {
    "line 3,4 9,12",   "angle 3,4 <30",   "text 3,4 h2",       "mtext 3,4 h2",  "lw 3,4 9,12 0,8",
    "2d 3,4 9,12 0,8", "3d 3,4 9,12 0,8", "arc 3,4 r2 a0..90", "circle 3,4 r2", "ELLIPSE 3,4 4,0 r0.5"};
const char* const polylines[] = {"lw 3,4 9,12 0,8", "2d 3,4 9,12 0,8", "3d 3,4 9,12 0,8"};

/// Aligns all but the last object to that one, which is a line.
struct Attempt {
    Attempt(Entry entry, const std::vector<std::string>& all, int k)
        : sheet{all}, job{entry, "by=2 pick=6,8"} {
        moved.assign(sheet.all().begin(), sheet.all().end() - 1);
        sheet.run([&] { job.run(sheet, sheet.ids(moved), sheet.id(moved.size()), k); });
        for (const Handle each : moved) poses.push_back(pose(sheet.drawing(), each));
    }
    Sheet sheet;
    Job job;
    std::vector<Handle> moved;
    std::vector<std::string> poses;
};

const char* const line = "line -50,0 50,0";

std::string named(Entry entry, const std::string& object, int k) {
    return object + ", entry " + std::to_string(static_cast<int>(entry)) + ", request " + std::to_string(k);
}

// A refused step is answered, and it is the last thing that happens to the object and to those after it.
void expectStops(Entry entry, const std::vector<std::string>& all) {
    for (int k = 0;; ++k) {
        SCOPED_TRACE(named(entry, all[0], k));
        Attempt attempt{entry, all, k};
        EXPECT_EQ(attempt.job.status, attempt.sheet.refused() ? Acad::eWasOpenForWrite : Acad::eOk);
        EXPECT_TRUE(attempt.sheet.isUndoneToTheBytes());
        if (!attempt.sheet.refused()) break;
        EXPECT_EQ(attempt.sheet.changesAfter(), 0);
    }
}

TEST(Faults, StopTheStepAndAreAnswered) {
    for (const Entry entry : {Entry::toLine, Entry::atLine, Entry::atCircle})
        for (const char* const object : objects) expectStops(entry, {object, line});
    for (const Entry entry : {Entry::segmentToLine, Entry::segmentAtLine, Entry::segmentAtCircle})
        for (const char* const object : polylines) expectStops(entry, {object, object, line});
}

// What is refused is left out, or nothing moves at all.
TEST(Faults, LeaveTheRestOfAWholeSelectionInPlaceOrAligned) {
    const std::vector<std::string> all{"line 0,0 6,8", "line 1,2,3 4,5,6", "circle 1,1 r5", line};
    for (const Entry entry : {Entry::boundary, Entry::onto, Entry::away}) {
        const Attempt first{entry, all, 0};
        EXPECT_EQ(first.job.status, Acad::eWasOpenForWrite);
        const auto done = Attempt{entry, all, -1}.poses, untouched = first.poses;
        for (int k = 0, isRefused = true; isRefused; ++k) {
            SCOPED_TRACE(named(entry, "", k));
            Attempt attempt{entry, all, k};
            const db::Record* refused = attempt.sheet.refused();
            isRefused = refused != nullptr;
            const auto& expected = attempt.job.status == Acad::eOk ? done : untouched;
            for (std::size_t i = 0; i < done.size(); ++i)
                EXPECT_TRUE(attempt.poses[i] == expected[i] ||
                            (&expected == &done && isRefused && attempt.moved[i] == refused->handle));
            EXPECT_TRUE(attempt.sheet.isUndoneToTheBytes());
        }
    }
}

} // namespace
} // namespace qx::tests
