#include "objectalign/wholeSelection.h"
#include "objectalign/alignSelection.h"
#include "tests/objectalign/Plane.h"
#include "tests/objectalign/Sheet.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>

namespace qx::tests {
using namespace drawings;
namespace {
using namespace objectalign;

constexpr double quarter = 1.5707963;
constexpr auto unticked = std::nullopt;
constexpr Moves bothForms[] = {Moves::objects, Moves::groups};

/// What the three functions are given besides objects and base line, and what they give back.
struct Job {
    enum class Entry { toBoundary, ontoPoint, awayFromPoint };

    Entry entry;
    double angle = 0;
    std::optional<double> spacing = unticked;
    AcGePoint2d centre = {}; ///< the anchor, or in and out the centre of the base line
    AcGePoint2d target = {}, from = {};
    Acad::ErrorStatus status = Acad::eOk;
    AcGePoint3d reference = {-1, -1, -1};

    /// Within a command; `other` is the boundary, or the second line. The k-th request is refused when that
    /// is not negative.
    void run(Sheet& sheet, const std::vector<Handle>& selected, Moves moves, Handle baseLine,
             Handle other = 0, int k = -1) {
        const AcDbObjectId base = sheet.id(baseLine), otherId = sheet.id(other);
        const AcDbObjectIdArray all = sheet.ids(selected);
        const AcDbObjectPointer<AcDbEntity> boundary{entry == Entry::toBoundary ? otherId : AcDbObjectId{}};
        sheet.refuse(k);
        const AcDbObjectIdArray ids = idsToMove(all, moves);
        const double by = spacing.value_or(1e9);
        const AcGePoint3d at{target.x, target.y, 0}, away{from.x, from.y, 0};
        if (entry == Entry::toBoundary)
            status = alignToBoundary(ids, base, angle, by, spacing.has_value(), *boundary.object(), centre,
                                     reference);
        else if (entry == Entry::ontoPoint)
            status = alignOntoPoint(ids, base, angle, by, spacing.has_value(), at, away, otherId, centre);
        else
            status = alignAwayFromPoint(ids, base, angle, by, spacing.has_value(), centre, target, from);
    }
};
using Entry = Job::Entry;

/// The base line and two more in a group, one that is in none, and what they are aligned to.
struct Scene {
    explicit Scene(const std::string& base, const std::string& other)
        : sheet{[&] {
              DrawingText content;
              for (const char* const each : {base.c_str(), "line 1,2,3 4,5,6", "lw 7,7 9,4 8,8 z-2 down",
                                             "circle 1,1 r5", other.c_str()})
                  draw(content, each);
              content.group("G", {0x100, 0x101, 0x102});
              return content;
          }()} {}

    std::string run(Job& job, Moves moves, int k = -1) {
        std::vector<Handle> selected{sheet.at(0), sheet.at(1), sheet.at(2)};
        if (moves == Moves::groups) selected = {sheet.at(3), sheet.at(2)};
        return sheet.run([&] { job.run(sheet, selected, moves, sheet.at(0), sheet.at(4), k); });
    }
    std::string base() { return sheet.form(sheet.at(0)); }
    std::string all() { return sheet.forms(sheet.all()); }

    Sheet sheet;
};

struct Case {
    const char* name;
    const char* base;
    const char* other;
    Job job;
    const char* result;   ///< the base line
    const char* handsOut; ///< the reference, or the base line's start about the centre
};

void check(const Case& each) {
    std::string asObjects;
    for (const Moves moves : bothForms) {
        Scene scene{each.base, each.other};
        const auto handles = scene.sheet.handles();
        Job job = each.job;
        EXPECT_EQ(scene.run(job, moves), "") << each.name;
        EXPECT_EQ(job.status, Acad::eOk) << each.name;
        EXPECT_EQ(scene.base(), each.result) << each.name;
        EXPECT_EQ(job.entry == Entry::toBoundary ? text(job.reference) : text(job.centre), each.handsOut)
            << each.name;
        if (moves == Moves::objects) asObjects = scene.all();
        EXPECT_EQ(scene.all(), asObjects) << each.name << ", groups";
        EXPECT_EQ(scene.sheet.handles(), handles) << each.name;
        EXPECT_TRUE(scene.sheet.isUndoneToTheBytes()) << each.name;
    }
}

TEST(WholeSelections, ComeShortOfABoundary) {
    const auto to = [](double angle, std::optional<double> spacing, AcGePoint2d anchor = {}) {
        return Job{Entry::toBoundary, angle, spacing, anchor};
    };
    const char* const level = "line 0,0 10,0";
    const char* const above = "line -50,20 50,20";
    const Case cases[] = {
        {"parallel and not to be moved", level, above, to(0, unticked), "0,0 10,0", "5,20"},
        {"moved", level, above, to(0, 3), "0,17 10,17", "5,20"},
        {"beyond it", level, above, to(0, -3), "0,23 10,23", "5,20"},
        {"back from it", level, above, to(0, 30), "0,-10 10,-10", "5,20"},
        {"onto it", level, above, to(0, 0), "0,20 10,20", "5,20"},
        {"on its other side", level, "line 50,-20 -50,-20", to(0, 3), "0,-17 10,-17", "5,-20"},
        {"anchor anywhere", level, above, to(0, 3, {2, -5}), "0,22 10,22", "7,20"},
        {"anchor on it: to the left", level, "line -5,0 50,0", to(0, 3), "0,3 10,3", "5,0"},
        {"square by a quarter turn that is cut short", level, "line -5,0 50,0", to(0, 1e6),
         "0.0268,1000000 10.0268,1000000", "5,0"},
        {"anchor on it, backwards", "line 10,0 0,0", "line -5,0 50,0", to(-quarter, 3), "3,10 3,0", "0,-5"},
        {"on its continuation", level, "line 90,20 95,20", to(0, 3), "0,17 10,17", "5,20"},
        {"missed: the origin", level, "circle 90,90 r1", to(0, 3, {20, 0}), "-17,0 -7,0", "5,0"},
        {"missed at the origin: to the left", level, "circle 90,90 r1", to(0, 3), "0,3 10,3", "5,0"},
        {"out of the plane is missed", level, "line -50,20,5 50,20,5", to(0, 3, {20, 0}), "-17,0 -7,0",
         "5,0"},
        {"a circle's first point as seen from the left", level, "circle 0,20 r5", to(0, 3), "0,22 10,22",
         "5,25"},
        {"slanted, the shift is square", level, "line 0,20 20,40", to(0, 3, {10, 0}), "0,27 10,27", "15,30"},
        {"a quarter turn is made", level, "line 9,-9 9,9", to(quarter, 3), "6,0 6,10", "9,5"},
        {"a hair more is taken back", level, "line 9,-9 9,9", to(1.5707964, 3), "6,0 6,-10", "9,-5"},
        {"by the half turn that is cut short", "line 0,0 1e6,0", above, to(3.1415926, unticked),
         "0,0 1000000,0", "500000,20"},
        {"and from pi something is left", "line 0,0 1e6,0", above, to(std::numbers::pi, unticked),
         "0,0 1000000,0.0536", "500000,20.0268"},
        {"far back is not taken back", "line 10,0 0,0", above, to(0, unticked), "-10,0 0,0", "5,20"},
        {"nor is -2", "line 0,0 -4.161468365,9.092974268", above, to(0, unticked), "0,0 10,0", "5,20"},
        {"about the anchor", level, "line 9,-9 9,9", to(quarter, unticked, {5, 5}), "10,0 10,10", "9,10"},
        {"heights don't count and stay", "line 0,0,1 10,0,90", above, to(0, 3), "0,17,1 10,17,90", "5,20"},
        {"no length: angle 0", "line 4,0 4,0", "line 9,-9 9,9", to(quarter, unticked), "0,4 0,4", "9,0"},
        {"no length, upright in space", "line 4,0 4,0,9", above, to(0, 3), "4,17 4,17,9", "0,20"},
    };
    for (const Case& each : cases) check(each);
}

TEST(WholeSelections, ComeOntoAPoint) {
    const auto onto = [](double angle, std::optional<double> spacing, AcGePoint2d centre, AcGePoint2d target,
                         std::optional<AcGePoint2d> from = std::nullopt) {
        const AcGePoint2d behind{target.x - 1, target.y};
        return Job{Entry::ontoPoint, angle, spacing, centre, target, from.value_or(behind)};
    };
    const char* const level = "line 0,0 10,0";
    const char* const second = "line 35,140 35,160";
    const AcGePoint2d middle{5, 0}, p{35, 40};
    const Case cases[] = {
        {"as far as it was", level, second, onto(0, unticked, middle, p), "30,90 40,90", "0,0"},
        {"by the spacing", level, second, onto(0, 7, middle, p), "30,47 40,47", "0,0"},
        {"by less than none", level, second, onto(0, -7, middle, p), "30,33 40,33", "0,0"},
        {"by none", level, second, onto(0, 0, middle, p), "30,40 40,40", "0,0"},
        {"where it is", level, second, onto(0, unticked, middle, middle), "0,0 10,0", "0,0"},
        {"turned where it is", level, second, onto(quarter, unticked, middle, middle), "5,-5 5,5", "0,0"},
        {"a hair more than a quarter turn", level, second, onto(1.5707964, 0, middle, p), "35,45 35,35",
         "0,0"},
        {"turned and moved", level, second, onto(quarter, 7, middle, p), "35,42 35,52", "0,0"},
        {"about a centre beside it", level, second, onto(0, 7, {5, 20}, p), "30,27 40,27", "0,20"},
        {"turned about a centre beside it", level, second, onto(quarter, 0, {5, 20}, p), "55,35 55,45",
         "0,20"},
        {"away from elsewhere", level, second, onto(0, 7, middle, p, {{35, 0}}), "23,40 33,40", "0,0"},
        {"by the second line's middle", level, second, onto(0, 7, middle, p, p), "37,40 47,40", "0,0"},
        {"heights of it don't count", level, "line 35,140,9 35,160,3", onto(0, 7, middle, p, p),
         "37,40 47,40", "0,0"},
        {"no second line: the origin", level, "circle 35,150 r5", onto(0, 7, middle, {0, 40}, {{0, 40}}),
         "-12,40 -2,40", "0,0"},
        {"no direction at all", level, "line 25,40 45,40", onto(0, 7, middle, p, p), "30,40 40,40", "0,0"},
        {"by a quarter turn that is cut short", level, second, onto(0, 1e6, middle, p),
         "30.0268,1000040 40.0268,1000040", "0,0"},
        {"heights stay", "line 0,0,4 10,0,8", second, onto(0, 7, middle, p), "30,47,4 40,47,8", "0,0"},
        {"no length", "line 5,0 5,0", second, onto(1, 7, middle, p), "35,47 35,47", "5,0"},
    };
    for (const Case& each : cases) check(each);
}

TEST(WholeSelections, ComeAwayFromAPoint) {
    const auto away = [](double angle, std::optional<double> spacing, AcGePoint2d from,
                         AcGePoint2d target = {35, 10}, AcGePoint2d centre = {5, 0}) {
        return Job{Entry::awayFromPoint, angle, spacing, centre, target, from};
    };
    const char* const level = "line 0,0 10,0";
    const char* const circle = "circle 0,0 r1";
    const Case cases[] = {
        {"nearer than the target: back", level, circle, away(0, unticked, {5, -30}), "18,-6 28,-6", "0,0"},
        {"farther than the target", level, circle, away(0, unticked, {35, -40}, {35, 0}), "30,10 40,10",
         "0,0"},
        {"as far as the target", level, circle, away(0, unticked, {20, 5}), "30,10 40,10", "0,0"},
        {"by the spacing", level, circle, away(0, 10, {5, -30}), "36,18 46,18", "0,0"},
        {"by less than none", level, circle, away(0, -10, {5, -30}), "24,2 34,2", "0,0"},
        {"turned", level, circle, away(quarter, 10, {5, -30}), "41,13 41,23", "0,0"},
        {"a hair more than a quarter turn", level, circle, away(1.5707964, 10, {5, -30}), "41,23 41,13",
         "0,0"},
        {"measured before the turn", level, circle, away(quarter, unticked, {5, -30}), "23,-11 23,-1", "0,0"},
        {"about a centre beside it", level, circle, away(quarter, 0, {5, -30}, {35, 10}, {5, 20}),
         "55,5 55,15", "0,20"},
        {"the target itself: no way", level, circle, away(0, 10, {35, 10}), "30,10 40,10", "0,0"},
    };
    for (const Case& each : cases) check(each);
}

// Nothing moves, and the centre stays what it was.
TEST(WholeSelections, StayWithoutABaseLine) {
    constexpr const char* noLine = "\n请选择基线为线段!";
    const struct {
        const char* name;
        const char* base;
        std::optional<std::size_t> erased;
        const char* said;
        Acad::ErrorStatus status;
    } cases[] = {
        {"circle", "circle 5,0 r5", std::nullopt, noLine, Acad::eOk},
        {"polyline", "lw 0,0 10,0", std::nullopt, noLine, Acad::eOk},
        {"erased", "line 0,0 10,0", 0, "", Acad::eWasErased},
        {"second line erased", "line 0,0 10,0", 4, "", Acad::eWasErased},
        {"second line erased, circle", "circle 5,0 r5", 4, "", Acad::eWasErased},
    };
    for (const auto& each : cases)
        for (const Moves moves : bothForms)
            for (const Entry entry : {Entry::toBoundary, Entry::ontoPoint, Entry::awayFromPoint}) {
                if (each.erased == 4 && entry != Entry::ontoPoint) continue;
                Scene scene{each.base, "line 0,9 9,9"};
                if (each.erased)
                    scene.sheet.run([&] { erase(scene.sheet.drawing(), scene.sheet.at(*each.erased)); });
                const std::string before = scene.all();
                Job job{entry, 1, 2, {5, 0}, {9, 9}, {8, 9}};
                EXPECT_EQ(scene.run(job, moves), each.said) << each.name;
                EXPECT_EQ(job.status, each.status) << each.name;
                EXPECT_EQ(text(job.centre) + " " + text(job.reference), "5,0 -1,-1,-1") << each.name;
                EXPECT_EQ(scene.all(), before) << each.name;
                EXPECT_TRUE(scene.sheet.isUndoneToTheBytes()) << each.name;
            }
}

TEST(WholeSelections, WhatCannotBeOpenedStaysTheOthersMove) {
    for (const bool isErased : {false, true}) {
        Sheet sheet({"line 0,0 10,0", isErased ? "line 0,1 10,1" : "line 0,1 10,1 LOCKED", "line 0,2 10,2"});
        Job job{Entry::awayFromPoint, 0, 5, {5, 0}, {5, 0}, {0, 0}};
        sheet.run([&] {
            if (isErased) erase(sheet.drawing(), sheet.at(1));
            job.run(sheet, {sheet.at(1), sheet.at(2), sheet.at(0)}, Moves::objects, sheet.at(0));
            EXPECT_EQ(sheet.forms(sheet.all()), "5,0 15,0; 0,1 10,1; 5,2 15,2");
            job.run(sheet, {}, Moves::objects, sheet.at(0));
        });
        EXPECT_EQ(text(job.centre), "-5,0") << "also when nothing is to move";
    }
}

TEST(WholeSelections, MoveTheMembersOfTheirGroupsInTheirOrder) {
    DrawingText content;
    std::vector<Handle> lines;
    for (int i = 0; i < 5; ++i) lines.push_back(content.line({0, 0, 0}, {10, 0, 0}));
    const auto [a, b, c, d, e] = std::tuple{lines[0], lines[1], lines[2], lines[3], lines[4]};
    content.group("ZULU", {a, b});
    content.group("alpha", {c, b, c});
    content.group("Mike", {d});
    Sheet sheet{content};
    const struct {
        const char* name;
        std::vector<Handle> selected, moved;
    } cases[] = {
        {"nothing selected", {}, {}},
        {"in no group", {e}, {}},
        {"one member", {d, e}, {d}},
        {"groups in the dictionary's order", {d, a}, {d, a, b}},
        {"a shared member twice", {b}, {c, b, c, a, b}},
        {"a group once", {a, b, a}, {c, b, c, a, b}},
    };
    sheet.run([&] {
        for (const auto& each : cases) {
            std::vector<Handle> moved;
            for (const AcDbObjectId id : idsToMove(sheet.ids(each.selected), Moves::groups))
                moved.push_back(id.handle().value());
            EXPECT_EQ(moved, each.moved) << each.name;
            EXPECT_EQ(idsToMove(sheet.ids(each.selected), Moves::objects).length(),
                      static_cast<int>(each.selected.size()))
                << each.name;
        }
        Job job{Entry::awayFromPoint, quarter, 5, {5, 0}, {5, 0}, {0, 0}};
        job.run(sheet, {b}, Moves::groups, a);
    });
    // Each time a quarter turn about 0,0 and then 10,-5.
    EXPECT_EQ(sheet.forms({a, b, d}), "10,-5 10,5; 20,-10 10,-10; 0,0 10,0");
}

TEST(WholeSelections, AnyRequestMayBeRefused) {
    for (const Moves moves : bothForms)
        for (const Entry entry : {Entry::toBoundary, Entry::ontoPoint, Entry::awayFromPoint}) {
            const auto run = [&](Scene& scene, Moves as, int k) {
                Job job{entry, 1, 2, {5, 0}, {9, 9}, {8, 9}};
                scene.run(job, as, k);
                return job.status;
            };
            std::vector<std::string> untouched, done;
            for (auto* const forms : {&untouched, &done}) {
                Scene scene{"line 0,0 10,0", "line 0,9 9,9"};
                if (forms == &done) run(scene, Moves::objects, -1);
                for (const Handle each : scene.sheet.all()) forms->push_back(scene.sheet.form(each));
            }
            for (int k = 0;; ++k) {
                Scene scene{"line 0,0 10,0", "line 0,9 9,9"};
                const auto status = run(scene, moves, k);
                const std::string where = "entry " + std::to_string(static_cast<int>(entry)) + ", request " +
                                          std::to_string(k) + (moves == Moves::groups ? ", groups" : "");
                EXPECT_EQ(scene.sheet.drawing().openCount(), 0u) << where;
                const db::Record* refused = scene.sheet.refused();
                const bool hasBegun = status == Acad::eOk && (!refused || db::isMainEntity(refused->kind));
                for (std::size_t i = 0; i < done.size(); ++i) {
                    if (hasBegun && refused && scene.sheet.at(i) == refused->handle) continue;
                    EXPECT_EQ(scene.sheet.form(scene.sheet.at(i)), (hasBegun ? done : untouched)[i]) << where;
                }
                EXPECT_TRUE(scene.sheet.isUndoneToTheBytes()) << where;
                if (!refused) break;
            }
        }
}

// What was picked decides which of the three it is, and which side is left.
TEST(WholeSelections, AreAlignedToWhatWasPicked) {
    const AlignmentPoint rightwards{.point = {35, 40, 0}, .angle = 0};
    const AlignmentPoint leftwards{.point = {35, 40, 0}, .angle = std::numbers::pi};
    AlignmentPoint onCircle{.curve = AlignmentPoint::Curve::circular, .point = {35, 40, 0}, .angle = 0};
    onCircle.centre = {35, 0, 9};
    const struct {
        const char* name;
        Reference reference;
        bool adjusts;
        const char *base, *pivot;
    } cases[] = {
        {"line", AlignmentLine{{}, 0, {}}, true, "5,93 15,93", "10,100"},
        {"line, only turned", AlignmentLine{{}, 0, {}}, false, "5,0 15,0", "10,100"},
        {"point of a line: to its left", rightwards, true, "35,47 45,47", "35,40"},
        {"of one drawn backwards", leftwards, true, "35,33 45,33", "35,40"},
        {"as far as the base point was", rightwards, false, "35,90 45,90", "35,40"},
        {"point of a circle: outwards", onCircle, true, "35,47 45,47", "35,40"},
        {"as far from the centre as it was", onCircle, false, "35,30 45,30", "35,40"},
    };
    for (const auto& each : cases) {
        Scene scene{"line 5,0 15,0", "line 0,100 90,100"};
        Sheet& sheet = scene.sheet;
        scene.sheet.run([&] {
            Reference reference = each.reference;
            if (auto* line = std::get_if<AlignmentLine>(&reference)) line->id = sheet.id(sheet.at(4));
            if (auto* point = std::get_if<AlignmentPoint>(&reference)) point->curveId = sheet.id(sheet.at(4));
            const WholeSelection selection{
                sheet.ids({sheet.at(0)}), Moves::objects, sheet.id(sheet.at(0)), {5, 0}};
            const Aligned aligned =
                alignWhole(selection, reference, {.spacing = 7, .adjustSpacing = each.adjusts});
            EXPECT_EQ(text(std::get<AcGePoint3d>(aligned.pivot)), each.pivot) << each.name;
        });
        EXPECT_EQ(scene.base(), each.base) << each.name;
    }
}

// ---- laws

constexpr unsigned seeds = 100;
constexpr double tolerance = 2e-4; // what cut angles make of a thousand units

/// A base line, a marker from the centre one unit to the right, all kinds of objects, and a job.
class RandomCase {
public:
    RandomCase(unsigned seed, Entry entry) : random_{seed} {
        job.entry = entry;
        job.angle = std::uniform_real_distribution{0.0, 6.28}(random_);
        if (random_() % 2) job.spacing = real() / 3;
        job.centre = {real(), real()};
        job.target = {real(), real()};
        job.from = entry == Entry::ontoPoint ? (Plane(job.target) - direction()).point()
                                             : AcGePoint2d{real(), real()};

        DrawingText content;
        content.line({real(), real(), real()}, {real(), real(), real()});
        content.line({job.centre.x, job.centre.y, 3}, {job.centre.x + 1, job.centre.y, 3});
        for (const char* const kind : {"lw", "2d", "3d", "lw down", "2d down"})
            draw(content, kind + (" " + place()) + " b0.3 " + place() + " " + place() + " z9");
        draw(content, "circle " + place() + ",4 r30 down");
        draw(content, "arc " + place() + ",4 r30 a20..200");
        outside = draw(content, "line " + place() + " " + place());
        // Within a radian of the direction, so that its perpendicular meets it not too far away.
        wayOfBoundary = Plane::towards(job.angle + real() / 500);
        const Plane from{real(), real()}, to = from + wayOfBoundary * 100;
        boundary = content.line({from.x, from.y, 0}, {to.x, to.y, 0});
        sheet = std::make_unique<Sheet>(content);
        for (const Handle each : sheet->all())
            if (each != outside && each != boundary) moved.push_back(each);
    }
    Plane direction() const { return Plane::towards(job.angle); }

    Job job{Entry::toBoundary};
    Handle outside = 0, boundary = 0;
    Plane wayOfBoundary;
    std::vector<Handle> moved; ///< the base line and the marker come first
    std::unique_ptr<Sheet> sheet;

private:
    double real() { return std::uniform_real_distribution{-500.0, 500.0}(random_); }
    std::string place() { return std::to_string(real()) + "," + std::to_string(real()); }
    std::mt19937 random_;
};

/// Where the centre belongs, by what is said of each function rather than by how it gets there.
Plane goal(const RandomCase& random, const Job& job) {
    const Plane centre{job.centre}, target{job.target}, from{job.from};
    if (job.entry == Entry::ontoPoint)
        return target + random.direction().left() * job.spacing.value_or((target - centre).length());
    const Plane outward = (target - from).unit();
    if (job.entry == Entry::awayFromPoint)
        return job.spacing ? target + outward * *job.spacing : from + outward * (centre - from).length();
    if (!job.spacing) return centre;
    const Plane to = Plane(random.sheet->points(random.boundary)[0]) - centre, up = random.direction().left();
    const double way = random.wayOfBoundary.across(to) / random.wayOfBoundary.across(up);
    return centre + up * (way - std::copysign(*job.spacing, way * *job.spacing));
}

TEST(WholeSelections, MoveRigidlyUntilTheBaseLineIsParallelAndTheCentreWhereItBelongs) {
    for (unsigned seed = 1; seed <= seeds; ++seed)
        for (const Entry entry : {Entry::toBoundary, Entry::ontoPoint, Entry::awayFromPoint}) {
            RandomCase random{seed, entry};
            Sheet& sheet = *random.sheet;
            const std::string where =
                "seed " + std::to_string(seed) + ", entry " + std::to_string(static_cast<int>(entry));
            std::vector<std::vector<AcGePoint3d>> before;
            for (const Handle each : random.moved) before.push_back(sheet.points(each));
            const std::string elsewhere = sheet.forms({random.outside, random.boundary});
            Job job = random.job;
            sheet.run(
                [&] { job.run(sheet, random.moved, Moves::objects, random.moved[0], random.boundary); });

            const auto base = sheet.points(random.moved[0]), marker = sheet.points(random.moved[1]);
            const Plane centre{marker[0]}, turn = Plane(marker[1]) - centre;
            for (std::size_t i = 0; i < before.size(); ++i) {
                const auto after = sheet.points(random.moved[i]);
                for (std::size_t p = 0; p < after.size(); ++p) {
                    const Plane expected =
                        centre + (Plane(before[i][p]) - Plane(random.job.centre)).turned(turn);
                    EXPECT_NEAR((Plane(after[p]) - expected).length(), 0, 1e-6) << where;
                    EXPECT_NEAR(after[p].z, before[i][p].z, 1e-9) << where;
                }
            }
            EXPECT_NEAR(random.direction().across((Plane(base[1]) - Plane(base[0])).unit()), 0, 2e-7)
                << where;
            EXPECT_NEAR((centre - goal(random, random.job)).length(), 0, tolerance)
                << where << text(centre.point());
            EXPECT_EQ(sheet.forms({random.outside, random.boundary}), elsewhere) << where;
            EXPECT_TRUE(sheet.isUndoneToTheBytes()) << where;
        }
}

} // namespace
} // namespace qx::tests
