// Every way of aligning, on one object each: where it comes to lie, and what is handed out.
#include "objectalign/wholeSelection.h"
#include "tests/objectalign/Job.h"

#include <cmath>
#include <span>

namespace qx::tests {
namespace {

struct Row {
    const char *name, *object, *job;
    std::string result;
    const char* baseLine = nullptr;
};

/// A line through the origin, 50 to either side.
std::string lineAlong(double angle) {
    const AcGeVector3d half{std::cos(angle) * 50, std::sin(angle) * 50, 0};
    return "LINE" + drawings::point(10, AcGePoint3d{} - half) + drawings::point(11, AcGePoint3d{} + half);
}

std::string outcome(Job job, const Row& row, const char* usualLine) {
    const char* const line = row.baseLine ? row.baseLine : usualLine;
    Sheet sheet({row.object, line ? line : lineAlong(job.angle)});
    const auto handles = sheet.handles();
    EXPECT_EQ(sheet.run([&] { job.run(sheet, sheet.ids({sheet.at(0)}), sheet.id(1)); }), "");
    EXPECT_EQ(sheet.handles(), handles);
    const std::string pose = sheet.pose(0);
    EXPECT_TRUE(sheet.isUndoneToTheBytes());
    return job.status != 0 ? std::to_string(job.status)
                           : pose + (job.handedOut.empty() ? "" : ": ") + job.handedOut;
}

/// What all rows have in common, their base line and part of their job, stands in front.
void check(Entry entry, const char* usualLine, const std::string& usualJob, std::span<const Row> rows) {
    for (const Row& row : rows)
        EXPECT_EQ(outcome(Job{entry, usualJob + " " + row.job}, row, usualLine), row.result) << row.name;
}

// Text that the line still runs through goes on by the height of its letters.
TEST(Alignments, OfEachToALine) {
    const Row rows[] = {
        {"the start is nearer", "line 1,2,5 4,6,7", "", "1,2,5<0: 1,0,5"},
        {"the end is nearer: turned far the other way", "line 1,2,5 4,6,7", "at=9,9", "9,6,5<180: 4,0,7"},
        {"equally near: the end", "line 0,3 4,3", "at=2,7 to=1", "6.1612,6.3659<237.29578: 2.5317,3.9428"},
        {"a quarter turn is not taken back", "line 1,0 5,0", "to=1.5707963", "1,0<89.999998: 0,0"},
        {"anything above is", "line 1,0 5,0", "to=1.5707964", "1,0<270.000007: 0,0"},
        {"onto the line and beyond it", "line 1,2,5 4,6,7", "by=3", "1,-3,5<0: 1,0,5"},
        {"a negative spacing stops short", "line 1,2,5 4,6,7", "by=-3", "1,3,5<0: 1,0,5"},
        {"on the line: to its left", "line 1,0 5,0", "by=3", "1,3<0: 1,0"},
        {"far away", "line 800000,600000 800004,600003", "by=0.5", "799999.9839,-0.5<0: 799999.9839,0"},
        {"without length", "line 1,2 1,2", "by=0 to=0.5", "1.6116,0.8804<0: 1.6116,0.8804"},
        {"past a half turn", "angle 3,4 <229.2", "by=1", "3,-1<278.400003: 3,0"},
        {"upside down is just past it", "angle 3,4 <180", "to=0.5", "3,4<208.647893: 3.9934,2.1816"},
        {"circle: from its edge, landing on the line", "circle 3,5,7 r2", "by=1", "3,-3,7<0: 3,0"},
        {"circle, only turned", "circle 3,5 r2", "to=2", "3,5<0: -1.3725,2.9989"},
        {"ellipse", "ELLIPSE 5,5,2 3,0 r0.5", "by=1 to=0.25 at=9,5",
         "6.4207,-0.9407,2<14.323945: 8.7089,2.2237,2"},
        {"a three-quarter turn is taken back", "text 1,2 h2", "to=4.7123889", "1,2<89.999998: 0,2"},
        {"above it is not", "text 1,2 h2", "to=4.7123890", "1,2<270.000001: 0,2"},
        {"the line runs through it", "text 1,2 h2", "by=1", "1,-3<0: 1,0"},
        {"spacing 0 leaves it on the line", "text 1,2 h2", "by=0", "1,0<0: 1,0"},
        {"beyond the drawn line counts", "text 100,2 h2", "by=1", "100,-3<0: 100,0"},
        {"not in the plane of the line", "text 1,2,5 h2", "by=1", "1,-1,5<0: 1,0,5"},
        {"run through: by the height of their letters", "mtext 1,2 h2", "by=1", "1,-3<0: 1,0"},
        {"between two lines", "MTEXT|10 1|20 10|40 2|71 1|1 H\\PH", "by=2.6", "1,-1.2667<0: 1,0"},
        {"lines, above three quarters", "mtext 1,2 h2", "to=4.7123890", "1,2<270.000001: 0,2"},
        {"upright in space", "3d 2,5 2,5,9", "at=2,4", "364"},
        {"arc over the line", "arc 3,10,2 r2 a0..180", "", "3,10,2<179.999997: 3,0"},
        {"arc, set off", "arc 3,10,2 r2 a0..180", "by=1", "3,3,2<179.999997: 3,0"},
        {"nearer than half its radius", "arc 3,-0.5 r2 a0..180", "by=1", "3,3<179.999997: 3,0"},
        {"half its radius beyond the line: not turned", "arc 3,-1 r2 a0..180", "by=1", "3,-3<0: 3,0"},
        {"a whole turn: turned only", "arc 3,10,2 r2 a0..360", "by=1", "3,10,2<0: 3,10,2"},
        {"on a locked layer", "line 1,2,5 4,6,7 LOCKED", "by=3", std::to_string(Acad::eOnLockedLayer)},
        {"text that draws nothing", "TEXT|10 1|20 2|40 2|50 30|1  ", "by=1", "1,-1<0: 1,0"},
        {"lines that draw nothing", "MTEXT|10 1|20 2|40 2|50 30|1  ", "by=1", "1,-1<0: 1,0"},
        {"perpendicular misses: the origin", "line 3,4 9,4", "by=1", "-0.6,-0.8<0: 0,0", "line 7,2 7,2"},
        {"arc: turned only", "arc 3,4 r2 a0..90", "by=1", "3,4<45: 3,4", "line 7,0 7,9"},
        {"a kind that is not handled", "WIPEOUT 1,1", "by=1", "364"},
        {"nearest vertex, nearer neighbour", "lw 9,9 2,5 5,8", "at=2,4 by=1",
         "9.7782,-3.1213<164.744881: 2,0"},
        {"neighbours equally near: the next", "lw 0,6 2,5 4,6", "at=2,4", "0.6584,6.7889<306.869898: 2,0"},
        {"vertices equally near: the first", "lw 9,9 0,4 4,4", "at=2,4", "9,9<209.054604: 0,0"},
        {"an open one wraps around", "lw 2,5 9,9 20,9 1,6", "at=2,4", "2,5<254.744881: 2,0"},
        {"from the last to the first", "lw 3,6 20,9 30,9 2,5", "at=2,4", "3.4142,5<325.00798: 2,0"},
        {"exactly back is folded", "lw 2,5 1,5", "at=3,5", "2,5<179.999997: 2,0"},
        {"upwards is not", "lw 2,5 1,5.1", "at=3,5", "2,5<0: 2,0"},
        {"doubled vertices have no edge", "lw 2,5 2,5 5,8 2,5", "at=2,4", "2,5<0: 2,0"},
        {"all in one place", "lw 2,5 2,5 2,5 closed", "at=2,4", "364"},
    };
    check(Entry::toLine, nullptr, "", rows);
}

// The line's own direction says where its left is. What then touches it is turned by a half turn.
TEST(Alignments, OfEachAtAPointOfALine) {
    const Row rows[] = {
        {"line: its middle; on the line it turns", "line 1,2 4,6", "", "2.5,0<179.999997"},
        {"spacing 0 does not turn", "line 1,2 4,6", "by=0", "-2.5,0<0"},
        {"equally near: the end", "line 3,4 -3,4", "by=3", "3,3<180"},
        {"block through the line turns about it", "hang 3,4", "by=3", "0,3<89.999997"},
        {"block ends on the line", "hang 3,4", "by=5", "0,5<89.999997"},
        {"block beyond where the line ends", "hang 3,4", "by=3", "0,3<270", "line 20,0 50,0"},
        {"text that hangs through the line", "text 3,4 h2", "by=-1", "0.75,-1<179.999997"},
        {"text that runs backwards", "TEXT|10 3|20 4|40 2|1 H|71 2", "by=1", "0.75,1<180"},
        {"arc that touches", "arc 3,10 r2 a0..180", "", "0,-2<359.999994"},
        {"a kind that is not handled", "WIPEOUT 1,1", "by=1", "364"},
        {"a line that runs back", "angle 3,4", "by=3", "0,-3<0", "line 9,0 -9,0"},
        {"no length: by the second point", "angle 3,4", "by=3 from=0,1,5", "-3,0<0", "line 9,0,1 9,0,5"},
        {"no line: by the second point", "angle 3,4", "by=3 from=-1,0", "0,-3<0", "lw -9,0 9,0"},
        {"neither: to the left of the x axis", "angle 3,4", "by=3 from=0,0,7", "0,3<0", "circle 0,0 r1"},
        {"left by a quarter turn cut short", "angle 3,4", "by=1e6", "0.0268,1000000<0"},
        {"nearest vertex, nearer neighbour", "lw 3,4 6,8 30,40", "by=90", "-2.5,90<0"},
        {"the one before is nearer", "lw 3,4 30,40 6,8", "by=90", "-2.5,90<0"},
        {"neighbours equally near: the lower one", "lw 3,4 10,0 50,50 0,10", "by=90", "4.0311,90<179.999997"},
        {"a neighbour as near as the vertex has no rank", "lw 3,4 4,3 9,12", "by=90", "-5,90<261.869898"},
        {"neither has one", "lw 3,4 4,3 0,5", "by=90", "0.7071,90<179.999997"},
    };
    check(Entry::atLine, nullptr, "", rows);
}

// The circle lies under the point; what reaches into it is turned by a half turn.
TEST(Alignments, OfEachAtAPointOfACircle) {
    const Row rows[] = {
        {"inward: all of it is inside", "line 1,2 4,6", "by=-3", "2.5,-3<179.999997"},
        {"inside, and its box is not", "line 1,2 4,6", "by=-1 to=5.4977871 from=-14.142,-14.142",
         "-2.4749,1.0607<314.999997"},
        {"contact far from the origin", "line 500001,500002 500004,500006",
         "at=500000,500000 from=500000,499980", "499997.5,500000<0"},
        {"inward, with its ends outside", "line 1,0 31,0", "by=-1", "15,-1<179.999997"},
        {"block that reaches in", "hang 3,4", "by=3", "0,3<89.999997"},
        {"block that touches from outside", "hang 3,4", "by=5", "0,5<270"},
        {"at its centre", "line 1,2 4,6", "by=3 from=0,0", "2.5,0<179.999997"},
    };
    check(Entry::atCircle, nullptr, "", rows);
}

TEST(Alignments, OfPickedSegmentsToALine) {
    const Row rows[] = {
        {"about the end nearer to the reference", "lw 0,0 6,8 20,8", "pick=3,4.1", "0,0<0: 5,50"},
        {"equally near: the second", "lw 0,0 6,8 20,8", "pick=3,4.1 at=3,4", "-4,8<359.999997: 1,50"},
        {"the second segment", "lw 0,0 6,8 20,8", "pick=9,7.9", "0,0<53.130102: 13,50"},
        {"folded by a half turn cut short", "lw 0,0 -6e5,-8e5", "pick=-6,-8", "0,0<179.999997: -500000,50"},
        {"a hair more is taken back", "lw 0,0 1e6,0", "pick=5,0 to=1.5707964", "0,0<270.000007: 50,-500000",
         "line 50,-9 50,9"},
        {"the carrier counts, not the segment", "lw 0,5 10,5 10,30 90,0", "pick=60,5.1", "0,5<0: 5,50"},
        {"of one carrier the lower number", "lw 0,0 10,0 10,5 20,5 20,0 30,0", "pick=25,0", "0,0<0: 5,50"},
        {"the gap of an open one", "lw 0,0 10,0 10,10", "pick=5,5.2", "0,0<315: 7.0711,50"},
        {"equal seen from above", "3d 5,5 5,5,9", "pick=5,5", "5,5<0"},
        {"spacing: no turn over where it touches", "lw 0,0 10,0 10,-9", "pick=5,0 by=4", "0,54<0: 5,50"},
        {"by the target, not by the line", "lw 0,0 10,0", "pick=5,0 by=4", "0,54<0: 5,50", "line 9,50 0,50"},
        {"left by a quarter turn cut short", "lw 0,0 10,0", "pick=5,0 by=1e6", "0.0268,1000050<0: 5,50"},
        {"a line not met is the origin", "lw 0,0 10,0", "pick=5,0 by=4", "-5,4<0: 0,0", "line 50,9 50,9"},
    };
    check(Entry::segmentToLine, "line -100,50 100,50", "", rows);
}

TEST(Alignments, OfPickedSegmentsAtAPointOfALine) {
    const Row rows[] = {
        {"as far as it was", "lw 0,20 10,20", "", "45,20<359.999997"},
        {"as far as after its turn", "lw 0,20 6,28", "pick=3,24", "45,28<359.999997"},
        {"turned over from across", "lw 0,20 10,20 5,0", "by=7", "55,7<179.999994"},
        {"where it only touches", "lw 0,20 10,20 5,13", "by=7", "55,7<179.999994"},
        {"not with the spacing 0", "lw 0,20 10,20 5,0", "by=0", "45,0<359.999997"},
        {"not without a spacing", "lw 0,20 10,20 5,-9", "", "45,20<359.999997"},
        {"not where it leads", "lw 0,20 10,20 5,0", "by=7", "45,7<359.999997", "line 200,0 300,0"},
        {"backwards: left is below", "lw 0,20 10,20", "by=7", "45,-7<359.999997", "line 99,0 0,0"},
        {"no line: the target's", "lw 0,20 10,20", "by=7", "45,7<359.999997", "circle 900,0 r1"},
        {"no length: the target's", "lw 0,20 10,20", "by=7", "45,7<359.999997", "line 50,9 50,9"},
        {"left of the line", "lw 0,20 10,20", "to=1.5707963 by=7", "50,2<89.999995"},
        {"heights stay", "3d 0,20,3 10,20,4 5,30", "by=7", "45,7,3<359.999997"},
    };
    check(Entry::segmentAtLine, "line 0,0 100,0", "at=50,0 pick=5,20", rows);
}

TEST(Alignments, OfPickedSegmentsAtAPointOfACircle) {
    const Row rows[] = {
        {"as far as it was", "lw 0,20 10,20", "from=50,-20,9", "45,20<359.999997"},
        {"turned over from across", "lw 0,20 10,20 5,-90", "by=7", "55,7<179.999994"},
        {"turned over, all of it inside", "lw 0,20 10,20", "by=-9", "55,-9<179.999994"},
        {"not where it only touches", "lw 0,20 10,20 5,12.99999", "by=7", "45,7<359.999997"},
        {"not beside the circle", "lw 0,20 10,20 95,7", "by=7", "45,7<359.999997"},
        {"not with the spacing 0", "lw 0,20 10,20 5,0", "by=0", "45,0<359.999997"},
    };
    check(Entry::segmentAtCircle, nullptr, "at=50,0 from=50,-20 pick=5,20", rows);
}

// Of the boundary the reference is handed out, otherwise where the base line starts about the centre.
TEST(Alignments, OfAWholeSelectionShortOfABoundary) {
    const Row rows[] = {
        {"parallel and not to be moved", "line 0,0 10,0", "", "0,0<0: 5,20"},
        {"anchor anywhere", "line 0,0 10,0", "by=3 pick=2,-5", "0,22<0: 7,20"},
        {"by a quarter turn cut short", "line 0,0 10,0", "by=1e6", "0.0268,1000000<0: 5,0", "line -5,0 50,0"},
        {"anchor on it, backwards", "line 10,0 0,0", "to=-1.5707963 by=3", "3,10<270.000002: 0,-5",
         "line -5,0 50,0"},
        {"missed: the origin", "line 0,0 10,0", "by=3 pick=20,0", "-17,0<0: 5,0", "circle 90,90 r1"},
        {"a hair more is taken back", "line 0,0 10,0", "to=1.5707964 by=3", "6,0<270.000007: 9,-5",
         "line 9,-9 9,9"},
        {"by the half turn cut short", "line 0,0 10,0", "to=3.14159265358979", "0,0<3e-06: 5,20"},
        {"far back is not taken back", "line 10,0 0,0", "", "-10,0<0: 5,20"},
        {"about the anchor", "line 0,0 10,0", "to=1.5707963 pick=5,5", "10,0<89.999998: 9,10",
         "line 9,-9 9,9"},
        {"heights don't count and stay", "line 0,0,1 10,0,90", "by=3", "0,17,1<0: 5,20"},
        {"no length: angle 0", "line 4,0 4,0", "to=1.5707963", "0,4<0: 9,0", "line 9,-9 9,9"},
    };
    check(Entry::boundary, "line -50,20 50,20", "", rows);
}

TEST(Alignments, OfAWholeSelectionOntoAPoint) {
    const Row rows[] = {
        {"as far as it was", "line 0,0 10,0", "", "30,90<0: 0,0"},
        {"turned where it is", "line 0,0 10,0", "to=1.5707963 at=5,0 from=4,0", "5,-5<89.999998: 0,0"},
        {"centre beside it", "line 0,0 10,0", "to=1.5707963 by=0 pick=5,20", "55,35<89.999998: 0,20"},
        {"away from elsewhere", "line 0,0 10,0", "by=7 from=35,0", "23,40<0: 0,0"},
        {"by the second line's middle", "line 0,0 10,0", "by=7 from=35,40", "37,40<0: 0,0"},
        {"no line: the origin", "line 0,0 10,0", "by=7 at=0,40 from=0,40", "-12,40<0: 0,0", "circle 5,5 r5"},
        {"no way at all", "line 0,0 10,0", "by=7 from=35,40", "30,40<0: 0,0", "line 25,40 45,40"},
        {"by a quarter turn cut short", "line 0,0 10,0", "by=1e6", "30.0268,1000040<0: 0,0"},
    };
    check(Entry::onto, "line 35,140 35,160", "pick=5,0 at=35,40 from=34,40", rows);
}

TEST(Alignments, OfAWholeSelectionAwayFromAPoint) {
    const Row rows[] = {
        {"nearer than the target: back", "line 0,0 10,0", "", "18,-6<0: 0,0"},
        {"farther than the target", "line 0,0 10,0", "from=35,-40 at=35,0", "30,10<0: 0,0"},
        {"as far as the target", "line 0,0 10,0", "from=20,5", "30,10<0: 0,0"},
        {"by the spacing", "line 0,0 10,0", "by=10", "36,18<0: 0,0"},
        {"before the turn", "line 0,0 10,0", "to=1.5707963", "23,-11<89.999998: 0,0"},
        {"the target itself: no way", "line 0,0 10,0", "by=10 from=35,10", "30,10<0: 0,0"},
    };
    check(Entry::away, nullptr, "pick=5,0 from=5,-30 at=35,10", rows);
}

// Nothing moves, and what is handed out stays what it was.
TEST(Alignments, OfAWholeSelectionNeedABaseLine) {
    constexpr const char* noLine = "\n请选择基线为线段!";
    for (const Entry entry : {Entry::boundary, Entry::onto, Entry::away})
        for (const char* const base : {"circle 5,0 r5", "lw 0,0 10,0"}) {
            Sheet sheet({base, "line 0,9 9,9"});
            Job job{entry, "to=1 by=2 pick=5,0 at=9,9 from=8,9"};
            EXPECT_EQ(sheet.run([&] { job.run(sheet, sheet.ids({sheet.at(0)}), sheet.id(1)); }), noLine);
            EXPECT_EQ(job.status, Acad::eOk);
            EXPECT_EQ(job.handedOut, entry == Entry::boundary ? "-1,-1,-1" : "5,0");
            EXPECT_TRUE(sheet.hasTheFilesBytes()) << base;
        }
}

TEST(Alignments, OfOnePolylinePickedTwiceFindItWhereItIsThen) {
    Sheet sheet({"lw 0,0 10,0 10,4", "line -100,50 100,50", "lw 7,7"});
    Job job{Entry::segmentToLine, "by=5 pick=9,0"};
    sheet.run([&] { job.run(sheet, sheet.ids({sheet.at(0), sheet.at(2), sheet.at(0)}), sheet.id(1)); });
    EXPECT_EQ(sheet.pose(0) + ": " + job.handedOut, "10,65<270: 5,50 12,50");
}

TEST(Alignments, OfGroupsMoveTheirMembersInTheirOrder) {
    using namespace objectalign;
    DrawingText content;
    std::vector<Handle> lines;
    for (int i = 0; i < 5; ++i) lines.push_back(content.line({0, 0, 0}, {10, 0, 0}));
    const auto [a, b, c, d, e] = std::tuple{lines[0], lines[1], lines[2], lines[3], lines[4]};
    content.group("ZULU", {a, b});
    content.group("alpha", {c, b, c});
    content.group("Mike", {d});
    Sheet sheet{content};
    sheet.run([&] {
        std::vector<Handle> moved;
        for (const AcDbObjectId id : idsToMove(sheet.ids({d, a, b, a, e}), Moves::groups))
            moved.push_back(id.handle().value());
        EXPECT_EQ(moved, (std::vector{c, b, c, d, a, b})) << "a shared member twice, a group once";
        EXPECT_EQ(idsToMove(sheet.ids({a, a, e}), Moves::objects).length(), 3);
        Job job{Entry::away, "to=1.5707963 by=5 pick=5,0 at=5,0 from=0,0"};
        job.run(sheet, sheet.ids({a, b, a}), AcDbObjectId::kNull);
    });
    EXPECT_EQ(sheet.poses({a, b, c}), "20,-10<179.999997; 10,-5<89.999998; 0,0<0")
        << "each time a quarter turn about 0,0 and then 10,-5";
}

} // namespace
} // namespace qx::tests
