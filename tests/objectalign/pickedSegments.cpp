#include "objectalign/pickedSegments.h"
#include "tests/objectalign/Plane.h"
#include "tests/objectalign/Sheet.h"

#include <gtest/gtest.h>

#include <random>

namespace qx::tests {
using namespace drawings;
namespace {
using namespace objectalign;

constexpr double quarter = 1.5707963;

/// What one of the three entries is given, and what it gives back.
struct Job {
    enum class Entry { toLine, atPoint, toCircle };

    Entry entry;
    double target = 0; ///< radians
    double spacing = 0;
    bool adjusts = false;
    AcGePoint3d at = {}; ///< the reference, or the alignment point
    AcGePoint3d centre = {};
    double radius = 0;
    int status = -1;
    AcDbObjectIdArray aligned = AcDbObjectIdArray();
    AcGePoint3dArray landings = AcGePoint3dArray();

    /// Within a command; the k-th request is refused when that is not negative.
    void run(Sheet& sheet, const std::vector<Handle>& polylines, const std::vector<AcGePoint2d>& picks,
             Handle line, int k = -1) {
        AcGePoint2dArray points;
        for (const AcGePoint2d& each : picks) points.append(each);
        const AcDbObjectIdArray ids = sheet.ids(polylines);
        const AcDbObjectId lineId = sheet.id(line);
        const AcDbObjectPointer<AcDbEntity> open{entry == Entry::toLine ? lineId : AcDbObjectId{}};
        sheet.refuse(k);
        if (entry == Entry::toCircle) {
            status = alignPickedSegmentsToCircle(ids, points, target, spacing, adjusts, at, centre, radius);
        } else if (entry == Entry::atPoint) {
            status = alignPickedSegments(ids, points, target, spacing, adjusts, at, lineId);
        } else {
            status = alignPickedSegmentsToLine(ids, points, target, spacing, adjusts, at, *open.object(),
                                               aligned, landings);
        }
    }
};
using Entry = Job::Entry;

struct Case {
    const char* name;
    const char* polyline;
    const char* pick;
    Job job;
    const char* result;
    const char* landing = ""; ///< on a line; empty: passed over
    const char* baseLine = "line -100,50 100,50";
};

void check(const Case& each) {
    Sheet sheet({each.polyline, each.baseLine});
    const auto handles = sheet.handles();
    Job job = each.job;
    const std::string said =
        sheet.run([&] { job.run(sheet, {sheet.at(0)}, {pointOf(each.pick)}, sheet.at(1)); });
    EXPECT_EQ(said, "") << each.name;
    EXPECT_EQ(job.status, Acad::eOk) << each.name;
    EXPECT_EQ(sheet.form(sheet.at(0)), each.result) << each.name;
    EXPECT_EQ(text(job.landings), each.landing) << each.name;
    EXPECT_EQ(job.aligned.length(), job.landings.length()) << each.name;
    EXPECT_EQ(sheet.handles(), handles) << each.name;
    EXPECT_TRUE(sheet.isUndoneToTheBytes()) << each.name;
}

TEST(PickedSegments, TurnOntoALineAndStayWithoutSpacing) {
    const Job plain{Entry::toLine}, far{.entry = Entry::toLine, .at = {100, 100, 7}};
    const Job tie{.entry = Entry::toLine, .at = {3, 4, 0}}, up{.entry = Entry::toLine, .target = quarter};
    const Job above{.entry = Entry::toLine, .target = quarter + 1e-7};
    const Job right{.entry = Entry::toLine, .at = {10, 0, 0}};
    const char* const bend = "lw 0,0 6,8 20,8";
    const char* const upright = "line 50,-100 50,100";
    const Case cases[] = {
        {"about the end nearer to the reference", bend, "3,4.1", plain, "0,0 10,0 18.4,-11.2", "5,50"},
        {"about the other end", bend, "3,4.1", far, "-4,8 6,8 14.4,-3.2", "1,50"},
        {"both ends equally near: the second", bend, "3,4.1", tie, "-4,8 6,8 14.4,-3.2", "1,50"},
        {"the second segment", bend, "9,7.9", plain, "0,0 6,8 20,8", "13,50"},
        {"an edge beyond a half turn is folded", "lw 0,0 -93.96926208,-34.20201433", "-9,-3.4", plain,
         "0,0 -100,0", "-50,50"},
        {"folded by the half turn that is cut short", "lw 0,0 -600000,-800000", "-6,-8", plain,
         "0,0 -1000000,0.0536", "-500000,50"},
        {"straight back is beyond it", "lw 10,0 0,0", "5,0", right, "10,0 0,0", "5,50"},
        {"a quarter turn is made", "lw 0,0 10,0", "5,0", up, "0,0 0,10", "50,5", upright},
        {"a hair more is taken back", "lw 0,0 10,0", "5,0", above, "0,0 0,-10", "50,-5", upright},
        {"and that by the half turn cut short", "lw 0,0 1e6,0", "5,0", above, "0,0 0.1268,-1000000",
         "50,-500000", upright},
        {"the carrier counts, not the segment", "lw 0,5 10,5 10,30 90,0", "60,5.1", plain,
         "0,5 10,5 10,30 90,0", "5,50"},
        {"of one carrier the lower number", "lw 0,0 10,0 10,5 20,5 20,0 30,0", "25,0", plain,
         "0,0 10,0 10,5 20,5 20,0 30,0", "5,50"},
        {"the gap of an open one", "lw 0,0 10,0 10,10", "5,5.2", plain, "0,0 7.0711,-7.0711 14.1421,0",
         "7.0711,50"},
        {"an arc by its chord", "lw 0,0 b1 6,8 20,8", "3,4.1", plain, "0,0 10,0 18.4,-11.2", "5,50"},
        {"vertices twice", "lw 0,0 0,0 6,8 6,8", "3,4", plain, "0,0 0,0 10,0 10,0", "5,50"},
        {"one vertex", "lw 5,5 closed", "5,5", plain, "5,5"},
        {"all vertices equal", "2d 5,5 5,5 5,5", "5,5", plain, "5,5 5,5 5,5"},
        {"equal seen from above", "3d 5,5 5,5,9", "5,5", plain, "5,5 5,5,9"},
        {"older, high above", "2d 0,0 6,8 20,8 z9", "3,4.1", plain, "0,0,9 10,0,9 18.4,-11.2,9", "5,50"},
        {"in space", "3d 0,0,5 6,8,7 20,8", "3,4.1", plain, "0,0,5 10,0,7 18.4,-11.2", "5,50"},
        {"the frame of a spline is not there", "2d 0,9 0,0 6,8 20,9 spline", "10,9", plain,
         "7.2,5.4 0,0 10,0 19.2,-10.6", "5,50"},
        {"seen from below", "lw 0,0 -6,8 -20,8 z9 down", "3,4.1", plain, "0,0,-9 10,0,-9 18.4,-11.2,-9",
         "5,50"},
    };
    for (const Case& each : cases) check(each);
}

TEST(PickedSegments, GoToALineAndThenToTheLeft) {
    const auto by = [](double spacing, double target = 0) {
        return Job{.entry = Entry::toLine, .target = target, .spacing = spacing, .adjusts = true};
    };
    const Case cases[] = {
        {"spacing", "lw 0,0 10,0 10,-5", "5,0", by(4), "0,54 10,54 10,49", "5,50"},
        {"no turn over where it touches the line", "lw 0,0 10,0 10,-9", "5,0", by(4), "0,54 10,54 10,45",
         "5,50"},
        {"none", "lw 0,0 10,0", "5,0", by(0), "0,50 10,50", "5,50"},
        {"negative", "lw 0,0 10,0", "5,0", by(-4), "0,46 10,46", "5,50"},
        {"turned", "lw 0,0 6,8 20,8", "3,4", by(4), "0,54 10,54 18.4,42.8", "5,50"},
        {"past the line's ends", "lw 900,0 890,0", "895,0", by(4), "900,54 890,54", "895,50"},
        {"left of a line upwards", "lw 0,0 10,0", "5,0", by(4, quarter), "46,0 46,10", "50,5",
         "line 50,9 50,8"},
        {"by the target, not by the line", "lw 0,0 10,0", "5,0", by(4), "0,54 10,54", "5,50",
         "line 9,50 0,50"},
        {"by a quarter turn that is cut short", "lw 0,0 10,0", "5,0", by(1e6),
         "0.0268,1000050 10.0268,1000050", "5,50"},
        {"a line that is not met counts as the origin", "lw 0,0 10,0", "5,0", by(4), "-5,4 5,4", "0,0",
         "line 50,9 50,9"},
        {"heights stay", "3d 0,0,5 10,0,7", "5,0", by(4), "0,54,5 10,54,7", "5,50"},
    };
    for (const Case& each : cases) check(each);
}

const Job atPoint{.entry = Entry::atPoint, .spacing = 7, .at = {50, 0, 0}};
const Job atCircle{
    .entry = Entry::toCircle, .spacing = 7, .at = {50, 0, 0}, .centre = {50, -30, 9}, .radius = 30};
Job by(double spacing, Job job = atPoint) {
    job.spacing = spacing;
    job.adjusts = true;
    return job;
}

TEST(PickedSegments, ComeToAPointOfALine) {
    const char* const ground = "line 0,0 100,0";
    const Job aslant{
        .entry = Entry::atPoint, .target = quarter, .spacing = 7, .adjusts = true, .at = {50, 0, 0}};
    const Case cases[] = {
        {"as far as it was", "lw 0,20 10,20", "5,20", atPoint, "45,20 55,20", "", ground},
        {"as far as it was to the right", "lw 0,-20 10,-20", "5,-20", atPoint, "45,-20 55,-20", "", ground},
        {"as far as after its turn", "lw 0,20 6,28", "3,24", atPoint, "45,28 55,28", "", ground},
        {"by the spacing", "lw 0,20 10,20 10,90", "5,20", by(7), "45,7 55,7 55,77", "", ground},
        {"turned over from across the line", "lw 0,20 10,20 5,0", "5,20", by(7), "55,7 45,7 50,27", "",
         ground},
        {"turned over where it only touches", "lw 0,20 10,20 5,13", "5,20", by(7), "55,7 45,7 50,14", "",
         ground},
        {"not where the line only leads to", "lw 0,20 10,20 5,0", "5,20", by(7), "45,7 55,7 50,-13", "",
         "line 200,0 300,0"},
        {"not with the spacing 0", "lw 0,20 10,20 5,0", "5,20", by(0), "45,0 55,0 50,-20", "", ground},
        {"not without a spacing", "lw 0,20 10,20 5,-9", "5,20", atPoint, "45,20 55,20 50,-9", "", ground},
        {"negative", "lw 0,20 10,20 5,0", "5,20", by(-7), "45,-7 55,-7 50,-27", "", ground},
        {"negative, turned over", "lw 0,20 10,20 5,40", "5,20", by(-7), "55,-7 45,-7 50,-27", "", ground},
        {"a line backwards has its left below", "lw 0,20 10,20", "5,20", by(7), "45,-7 55,-7", "",
         "line 100,0 0,0"},
        {"and measures from there", "lw 0,20 10,20", "5,20", atPoint, "45,20 55,20", "", "line 100,0 0,0"},
        {"no line: left of the target", "lw 0,20 10,20", "5,20", by(7), "45,7 55,7", "", "circle 900,0 r1"},
        {"no length: left of the target", "lw 0,20 10,20", "5,20", by(7), "45,7 55,7", "", "line 50,9 50,9"},
        {"the line's left, not the target's", "lw 0,20 10,20", "5,20", aslant, "50,2 50,12", "", ground},
        {"by the half turn cut short", "lw 4e5,1e6 6e5,1e6 5e5,0", "5e5,1e6", by(7),
         "100050,6.9946 -99950,7.0054 50.0536,1000007", "", "line -9e6,0 9e6,0"},
        {"heights stay", "3d 0,20,3 10,20,4 5,30", "5,20", by(7), "45,7,3 55,7,4 50,17", "", ground},
        {"seen from below", "lw 0,20 -10,20 -5,0 down", "5,20", by(7), "55,7 45,7 50,27", "", ground},
        {"one vertex stays", "lw 5,5", "5,5", by(7), "5,5", "", ground},
    };
    for (const Case& each : cases) check(each);
}

TEST(PickedSegments, ComeToAPointOfACircle) {
    const Case cases[] = {
        {"as far as it was", "lw 0,20 10,20", "5,20", atCircle, "45,20 55,20"},
        {"outwards", "lw 0,20 10,20 10,90", "5,20", by(7, atCircle), "45,7 55,7 55,77"},
        {"turned over from inside", "lw 0,20 10,20 5,0", "5,20", by(7, atCircle), "55,7 45,7 50,27"},
        {"turned over from across", "lw 0,20 10,20 5,-90", "5,20", by(7, atCircle), "55,7 45,7 50,117"},
        {"turned over though all of it is inside", "lw 0,20 10,20", "5,20", by(-20, atCircle),
         "55,-20 45,-20"},
        {"not where it only touches", "lw 0,20 10,20 5,13", "5,20", by(7, atCircle), "45,7 55,7 50,0"},
        {"not beside the circle", "lw 0,20 10,20 95,7", "5,20", by(7, atCircle), "45,7 55,7 140,-6"},
        {"not with the spacing 0", "lw 0,20 10,20 5,0", "5,20", by(0, atCircle), "45,0 55,0 50,-20"},
        {"not without a spacing", "lw 0,20 10,20 5,-9", "5,20", atCircle, "45,20 55,20 50,-9"},
    };
    for (const Case& each : cases) check(each);
}

TEST(PickedSegments, OfOnePolylinePickedTwiceAreFoundWhereTheyAreThen) {
    Sheet sheet({"lw 0,0 10,0 10,4", "line -100,50 100,50", "lw 7,7", "3d 20,0 30,0"});
    Job job{.entry = Entry::toLine, .target = 0, .spacing = 5, .adjusts = true};
    const std::vector<Handle> picked{sheet.at(0), sheet.at(2), sheet.at(0), sheet.at(3)};
    // At its new place the upright segment passes at x = 10; it is turned about its end nearer to the origin.
    sheet.run([&] { job.run(sheet, picked, {{5, 0}, {7, 7}, {10, 2}, {25, 0}}, sheet.at(1)); });
    EXPECT_EQ(sheet.forms({sheet.at(0), sheet.at(3)}), "10,65 10,55 14,55; 20,55 30,55");
    EXPECT_EQ(text(job.landings), "5,50 12,50 25,50");
    EXPECT_EQ(job.aligned.length(), 3);
}

TEST(PickedSegments, StopAtTheFirstThatCannotBeOpened) {
    const struct {
        const char* name;
        const char* second;
        bool isErased;
        int status;
    } cases[] = {
        {"locked", "lw 0,20 10,20 LOCKED", false, Acad::eOnLockedLayer},
        {"erased", "lw 0,20 10,20", true, Acad::eWasErased},
    };
    for (const auto& each : cases)
        for (const Entry entry : {Entry::toLine, Entry::atPoint, Entry::toCircle}) {
            Sheet sheet({"lw 0,20 10,20", each.second, "lw 0,20 10,20", "line 0,0 100,0"});
            Job job = by(7, atCircle);
            job.entry = entry;
            sheet.run([&] {
                if (each.isErased) erase(sheet.drawing(), sheet.at(1));
                const std::vector<AcGePoint2d> picks(3, {5, 20});
                job.run(sheet, {sheet.at(0), sheet.at(1), sheet.at(2)}, picks, sheet.at(3));
            });
            EXPECT_EQ(job.status, each.status) << each.name;
            EXPECT_EQ(sheet.forms({sheet.at(0), sheet.at(2)}),
                      entry == Entry::toLine ? "0,7 10,7; 0,20 10,20" : "45,7 55,7; 0,20 10,20")
                << each.name;
            EXPECT_EQ(job.aligned.length(), entry == Entry::toLine ? 1 : 0) << each.name;
        }
    Sheet sheet({"lw 0,20 10,20", "line 0,0 100,0"});
    Job job = by(7);
    sheet.run([&] {
        erase(sheet.drawing(), sheet.at(1));
        job.run(sheet, {sheet.at(0)}, {{5, 20}}, sheet.at(1));
    });
    EXPECT_EQ(job.status, Acad::eWasErased);
    EXPECT_EQ(sheet.form(sheet.at(0)), "0,20 10,20");
}

// Whatever is refused: its status comes back, what came before is aligned and what comes later is not.
TEST(PickedSegments, AnyRequestMayBeRefused) {
    const char* const untouched = "0,20 10,20 5,0";
    for (const Entry entry : {Entry::toLine, Entry::atPoint, Entry::toCircle})
        for (int k = 0;; ++k) {
            Sheet sheet({"lw 0,20 10,20 5,0", "2d 0,20 10,20 5,0", "line 0,0 100,0"});
            const Handle first = sheet.at(0), second = sheet.at(1), line = sheet.at(2);
            Job job = by(7, atCircle);
            job.entry = entry;
            sheet.run([&] { job.run(sheet, {first, second}, {{5, 20}, {5, 20}}, line, k); });
            const std::string where =
                "entry " + std::to_string(static_cast<int>(entry)) + ", request " + std::to_string(k);
            EXPECT_EQ(sheet.drawing().openCount(), 0u) << where;
            const db::Record* refused = sheet.refused();
            EXPECT_EQ(job.status, refused ? Acad::eWasOpenForWrite : Acad::eOk) << where;
            if (!refused) break;
            const std::string all = sheet.forms({first, second}), done = sheet.form(first);
            const bool isFirstDone = done == (entry == Entry::toLine ? "0,7 10,7 5,-13" : "55,7 45,7 50,27");
            EXPECT_TRUE(refused->handle != second || isFirstDone) << where << ": " << all;
            EXPECT_TRUE(refused->handle != first || sheet.form(second) == untouched) << where << ": " << all;
            EXPECT_TRUE(sheet.isUndoneToTheBytes()) << where;
        }
}

// ---- laws

constexpr unsigned seeds = 200;

/// A polyline of any kind, with a pick, a base line through the alignment point, and a job.
class RandomCase {
public:
    explicit RandomCase(unsigned seed) : random_{seed} {
        const char* const kinds[] = {"lw", "2d", "3d", "lw", "2d"};
        const unsigned kind = seed % 5;
        std::string polyline = kinds[kind];
        for (int i = 2 + static_cast<int>(random_() % 6); i > 0; --i) {
            polyline += " " + number() + "," + number() + (kind == 2 ? "," + number() : "");
            if (kind != 2 && random_() % 4 == 0) polyline += " b0.5";
        }
        if (kind != 2) polyline += " z" + number();
        if (kind > 2) polyline += " down";
        if (random_() % 2) polyline += " closed";

        job.target = std::uniform_real_distribution{0.0, 3.14}(random_);
        job.spacing = real() / 5;
        job.adjusts = seed % 2 == 0;
        job.at = {real(), real(), 0};
        along = Plane::towards(job.target) * (random_() % 2 ? 300 : -300);
        job.radius = 300;
        job.centre = job.at + AcGeVector3d{std::sin(job.target), -std::cos(job.target), 0} * job.radius;
        pick = {real(), real()};
        const AcGeVector3d way{along.x, along.y, 0};
        sheet = std::make_unique<Sheet>(std::vector{polyline, exact(job.at - way, job.at + way)});
    }

    /// The index at which the picked segment begins, measured against every carrier.
    std::size_t picked(const std::vector<AcGePoint3d>& v) const {
        std::size_t best = 0;
        double shortest = 1e300;
        for (std::size_t i = 0; i < v.size(); ++i) {
            const Plane from = Plane(v[i]), way = Plane(v[(i + 1) % v.size()]) - from;
            const double distance = std::abs(way.unit().across(Plane(pick) - from));
            if (distance < shortest - 1e-9) best = i, shortest = distance;
        }
        return best;
    }

    Job job{Entry::toLine};
    Plane along;
    AcGePoint2d pick;
    std::unique_ptr<Sheet> sheet;

private:
    double real() { return std::uniform_real_distribution{-500.0, 500.0}(random_); }
    std::string number() { return std::to_string(real()); }
    static std::string exact(const AcGePoint3d& from, const AcGePoint3d& to) {
        return "LINE" + point(10, from) + point(11, to);
    }
    std::mt19937 random_;
};

double largestChangeOfDistance(const std::vector<AcGePoint3d>& a, const std::vector<AcGePoint3d>& b) {
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            largest = std::max(largest, std::abs(a[i].distanceTo(a[j]) - b[i].distanceTo(b[j])));
    return largest;
}

TEST(PickedSegments, EndParallelWithTheirMiddleWhereItBelongs) {
    constexpr double tolerance = 2e-4; // what cut angles make of a thousand units
    for (unsigned seed = 1; seed <= seeds; ++seed)
        for (const Entry entry : {Entry::toLine, Entry::atPoint, Entry::toCircle}) {
            RandomCase random{seed};
            Sheet& sheet = *random.sheet;
            Job job = random.job;
            job.entry = entry;
            const Handle handle = sheet.at(0);
            const auto before = sheet.points(handle);
            sheet.run([&] { job.run(sheet, {handle}, {random.pick}, sheet.at(1)); });
            const auto after = sheet.points(handle);
            const std::string where =
                "seed " + std::to_string(seed) + ", entry " + std::to_string(static_cast<int>(entry));

            EXPECT_LE(largestChangeOfDistance(before, after), 1e-6) << where;
            for (std::size_t i = 0; i < after.size(); ++i)
                EXPECT_NEAR(after[i].z, before[i].z, 1e-9) << where;
            const std::size_t i = random.picked(before), j = (i + 1) % before.size();
            const Plane target = Plane::towards(job.target);
            EXPECT_NEAR(target.across((Plane(after[j]) - Plane(after[i])).unit()), 0, 2e-7) << where;

            // The middle after the turn about the end nearer to the reference; a turned-over polyline shows
            // the segment the other way round.
            const Plane at = Plane(job.at), middle = (Plane(after[i]) + Plane(after[j])) * 0.5;
            const bool isFirst = (Plane(before[i]) - at).length() < (Plane(before[j]) - at).length();
            const std::size_t s = isFirst ? i : j, e = isFirst ? j : i;
            const Plane half = (Plane(after[e]) - Plane(after[s])) * 0.5, turned = Plane(before[s]) + half;
            // At a circle, left is left of the tangent; at a line's point, left of the line as it was drawn.
            const Plane base = entry == Entry::atPoint ? random.along.unit() : target;
            const double was = base.across(turned - at), is = base.across(middle - at);
            EXPECT_NEAR(is, job.adjusts ? job.spacing : was, tolerance) << where;
            const Plane level = entry == Entry::toLine ? turned : at;
            EXPECT_NEAR(base.along(middle - level), 0, tolerance) << where;
            const bool isOnlyTurned = entry == Entry::toLine && !job.adjusts;
            EXPECT_TRUE(!isOnlyTurned || (Plane(after[s]) - Plane(before[s])).length() < 1e-9) << where;
            EXPECT_TRUE(sheet.isUndoneToTheBytes()) << where;
        }
}

} // namespace
} // namespace qx::tests
