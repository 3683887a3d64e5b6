// What is refused: what can't be opened at all, and every request of every alignment made to fail once.
#include "tests/objectalign/Job.h"

#include "objectalign/alignmentLine.h"
#include "objectalign/crossing.h"
#include "objectalign/curvePicks.h"
#include "objectalign/tangent.h"

namespace qx::tests {
using namespace drawings;
namespace {
using namespace objectalign;

const char* const objects[] = {
    "line 3,4 9,12",   "angle 3,4 <30",   "text 3,4 h2",       "mtext 3,4 h2",  "lw 3,4 9,12 0,8",
    "2d 3,4 9,12 0,8", "3d 3,4 9,12 0,8", "arc 3,4 r2 a0..90", "circle 3,4 r2", "ELLIPSE 3,4 4,0 r0.5"};
const char* const polylines[] = {"lw 3,4 9,12 0,8", "2d 3,4 9,12 0,8", "3d 3,4 9,12 0,8"};

constexpr Entry eachEntries[] = {Entry::toLine, Entry::atLine, Entry::atCircle};
constexpr Entry segmentEntries[] = {Entry::segmentToLine, Entry::segmentAtLine, Entry::segmentAtCircle};
constexpr Entry wholeEntries[] = {Entry::boundary, Entry::onto, Entry::away};

/// Aligns all but the last object to that one, which is a line.
struct Attempt {
    Attempt(Entry entry, const std::vector<std::string>& all, int k, bool isErased = false)
        : sheet{all}, job{entry, "by=2 pick=6,8"} {
        moved.assign(sheet.all().begin(), sheet.all().end() - 1);
        sheet.run([&] {
            if (isErased) erase(sheet.drawing(), moved.back());
            job.run(sheet, sheet.ids(moved), sheet.id(moved.size()), k);
        });
        EXPECT_EQ(sheet.drawing().openCount(), 0u);
        for (const Handle each : moved) poses.push_back(pose(sheet.drawing(), each));
    }
    Sheet sheet;
    Job job;
    std::vector<Handle> moved;
    std::vector<std::string> poses;
};

const char* const line = "line -50,0 50,0";

std::string named(Entry entry, const char* object, int k) {
    return "entry " + std::to_string(static_cast<int>(entry)) + ", " + object + ", request " +
           std::to_string(k);
}

// A refused step is answered, and it is the last thing that happens to the object and to those after it.
void expectStops(Entry entry, const std::vector<std::string>& all) {
    for (int k = 0;; ++k) {
        SCOPED_TRACE(named(entry, all[0].c_str(), k));
        Attempt attempt{entry, all, k};
        EXPECT_EQ(attempt.job.status, attempt.sheet.refused() ? Acad::eWasOpenForWrite : Acad::eOk);
        EXPECT_TRUE(attempt.sheet.isUndoneToTheBytes());
        if (!attempt.sheet.refused()) break;
        EXPECT_EQ(attempt.sheet.changesAfter(), 0);
    }
}

TEST(Faults, StopTheStepAndAreAnswered) {
    for (const Entry entry : eachEntries)
        for (const char* const object : objects) expectStops(entry, {object, line});
    for (const Entry entry : segmentEntries)
        for (const char* const object : polylines) expectStops(entry, {object, object, line});
}

// What is refused is left out, or nothing moves at all.
TEST(Faults, LeaveTheRestOfAWholeSelectionInPlaceOrAligned) {
    const std::vector<std::string> all{"line 0,0 10,0", "line 1,2,3 4,5,6", "circle 1,1 r5", line};
    for (const Entry entry : wholeEntries) {
        const auto done = Attempt{entry, all, -1}.poses, untouched = Attempt{entry, all, 0}.poses;
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

TEST(Refusals, OfLockedAndErasedObjects) {
    for (const bool isErased : {false, true}) {
        const int status = isErased ? Acad::eWasErased : Acad::eOnLockedLayer;
        const std::string locked = isErased ? "" : " LOCKED";
        for (const Entry entry : eachEntries)
            for (const char* const object : objects) {
                Attempt attempt{entry, {object + locked, line}, -1, isErased};
                EXPECT_EQ(attempt.job.status, status) << named(entry, object, -1);
                EXPECT_EQ(attempt.sheet.changesAfter(), 0);
                EXPECT_TRUE(attempt.sheet.isUndoneToTheBytes());
            }
        for (const Entry entry : segmentEntries) {
            const Attempt attempt{entry, {polylines[0], polylines[1] + locked, line}, -1, isErased};
            EXPECT_EQ(attempt.job.status, status);
            EXPECT_EQ(attempt.poses[0], Attempt(entry, {polylines[0], line}, -1).poses[0])
                << "the one before";
        }
        for (const Entry entry : wholeEntries) {
            const Attempt attempt{entry, {objects[0], "line 0,1 5,1" + locked, line}, -1, isErased};
            EXPECT_EQ(attempt.job.status, Acad::eOk);
            EXPECT_EQ(attempt.poses[0], Attempt(entry, {objects[0], line}, -1).poses[0]) << "the others move";
            EXPECT_EQ(attempt.poses[1], isErased ? "gone" : "0,1<0");
        }
    }
}

TEST(Refusals, OfACurveStopTheStep) {
    for (const Entry entry :
         {Entry::atLine, Entry::segmentAtLine, Entry::onto, Entry::away, Entry::boundary}) {
        Sheet sheet({polylines[0], line});
        Job job{entry, "by=2 pick=6,8"};
        const bool isOpen = entry == Entry::boundary; // which reads its base line only
        sheet.run([&] {
            erase(sheet.drawing(), sheet.at(isOpen || entry == Entry::away ? 0 : 1));
            job.run(sheet, sheet.ids({sheet.at(0)}), sheet.id(1));
        });
        EXPECT_EQ(job.status, Acad::eWasErased) << static_cast<int>(entry);
        EXPECT_TRUE(sheet.isUndoneToTheBytes());
    }
    Sheet sheet({objects[0], line});
    bool isAcross = false;
    sheet.run([&] {
        erase(sheet.drawing(), sheet.at(0));
        EXPECT_EQ(meeting(sheet.id(1))(sheet.id(0), isAcross), Acad::eWasErased);
        EXPECT_EQ(meeting(sheet.id(0))(sheet.id(1), isAcross), Acad::eWasErased);
        EXPECT_EQ(reachingInside({3, 4, 0}, 9)(sheet.id(0), isAcross), Acad::eWasErased);
    });
    EXPECT_FALSE(isAcross);
}

// Of what can't be opened nothing is found, nothing is drawn and nothing is said.
TEST(Faults, InFindingCurves) {
    using Find = bool (*)(AcDbObjectId, ConstructionEntities&);
    const Find isLine = [](AcDbObjectId id, ConstructionEntities& construction) {
        return analyseAlignmentLine(id, {5, 0}, construction).has_value();
    };
    const struct {
        const char* curve;
        Find find;
        bool isFoundUndrawn = false;
    } cases[] = {
        {"line 0,0,9 10,10,9", isLine},
        {"lw 0,0 10,0", isLine},
        {"2d 0,0 10,0", isLine},
        {"lw 0,0 10,0",
         [](auto id, auto&) {
             return !polylineSegmentAt(id, {5, 0}).id.isNull();
         }},
        {"2d 0,0 10,0",
         [](auto id, auto&) {
             return !polyline2dSegmentAt(id, {5, 0}).id.isNull();
         }},
        {"circle 0,0 r10",
         [](auto id, auto&) {
             return !tangentAt(id, {5, 0}).curve.isNull();
         },
         true},
    };
    for (const auto& each : cases)
        for (int k = 0, isRefused = true; isRefused; ++k) {
            SCOPED_TRACE(each.curve + (", request " + std::to_string(k)));
            Sheet sheet({each.curve});
            const std::string said = sheet.run([&] {
                ConstructionEntities construction;
                sheet.refuse(k);
                const bool isFound = each.find(sheet.id(0), construction);
                sheet.drawing().setFault(nullptr);
                EXPECT_TRUE(isFound == !sheet.refused() || (each.isFoundUndrawn && k > 0));
            });
            EXPECT_EQ(said, "");
            isRefused = sheet.refused() != nullptr;
            EXPECT_TRUE(!isRefused || sheet.hasTheFilesBytes());
        }
}
} // namespace
} // namespace qx::tests
