// What holds whatever the drawing, tried on random ones with every kind of object: what is aligned moves
// rigidly, ends parallel and has the point that counts where it belongs. A failure names the seed.
#include "tests/objectalign/Job.h"

#include "db/RecordedShape.h"
#include "dbmtext.h"
#include "shape/randomShapes.h"

#include <numbers>

namespace qx::tests {
using namespace drawings;
namespace {

constexpr double tolerance = 2e-4; // what angles that are cut to seven decimals make of a thousand units

AcGeVector3d unit(double angle) { return {std::cos(angle), std::sin(angle), 0}; }
AcGeVector3d flat(const AcGeVector3d& v) { return {v.x, v.y, 0}; }
AcGeVector3d leftOf(const AcGeVector3d& v) { return {-v.y, v.x, 0}; }

std::vector<AcGePoint3d> shapeOf(const db::Drawing& drawing, Handle handle) {
    return RecordedShape{*drawing.liveEntity(drawing.find(handle))}.compared;
}

/// A turn about the Z axis and a translation in the XY plane.
class Motion {
public:
    /// From points to where they are later. A turn shows only between points that are not all one.
    Motion(const std::vector<AcGePoint3d>& before, const std::vector<AcGePoint3d>& after) {
        if (before.empty() || before.size() != after.size()) return;
        std::size_t far = 0;
        for (std::size_t i = 0; i < before.size(); ++i)
            if (flat(before[i] - before[0]).length() > flat(before[far] - before[0]).length()) far = i;
        from_ = before[0];
        to_ = after[0];
        const AcGeVector3d old = flat(before[far] - from_), now = flat(after[far] - to_);
        if (!old.isZeroLength()) turn = old.angleTo(now, AcGeVector3d::kZAxis);
        isRigid = true;
        for (std::size_t i = 0; i < before.size(); ++i)
            isRigid = isRigid && image(before[i]).distanceTo(after[i]) <= 1e-7; // false for what is no number
    }

    AcGePoint3d image(const AcGePoint3d& p) const {
        return to_ + (p - from_).rotateBy(turn, AcGeVector3d::kZAxis);
    }

    double turn = 0;      ///< radians
    bool isRigid = false; ///< nothing is bent, and every z has stayed

private:
    AcGePoint3d from_, to_;
};

/// An object, and what a reader of its file would say about it.
struct Specimen {
    const char* text;
    std::vector<AcGePoint3d>
        points;                  ///< ends, vertices or what there is of them; of an arc: centre and middle
    AcGeVector3d direction = {}; ///< of a block or text, of an arc's chord
    double toOutline = 0, height = 0;

    bool is(const char* kind) const { return std::string_view{text}.starts_with(kind); }
    bool isPolyline() const { return is("lw") || is("2d") || is("3d"); }
};

const AcGeVector3d up = unit(std::numbers::pi / 3), back{-up.x, up.y, 0}, down{up.x, -up.y, 0};
const AcGePoint3d fromAbove{13, 4, 2}, fromBelow{-13, 4, -2};

const Specimen specimens[] = {
    {"line 13,4,5 -39,72,-2", {{13, 4, 5}, {-39, 72, -2}}},
    {"angle 13,4,2 <60", {fromAbove}, up},
    {"angle 13,4,2 <60 down", {fromBelow}, back},
    {"angle 13,4,2 <300", {fromAbove}, down},
    {"text 13,4,0 <60 h2.5", {{13, 4, 0}}, up, 0, 2.5},
    {"text 13,4,2 <60 h7 down", {fromBelow}, back, 0, 7},
    {"mtext 13,4,0 <300 h2.5", {{13, 4, 0}}, down, 0, 2.5},
    {"lw 13,4 39,32 -70,78 -60,-41 z3", {{13, 4, 3}, {39, 32, 3}, {-70, 78, 3}, {-60, -41, 3}}},
    {"lw 13,4 39,32 -70,78 z3 down", {{-13, 4, -3}, {-39, 32, -3}, {70, 78, -3}}},
    {"2d 13,4 39,32 -70,78 down", {{-13, 4, 0}, {-39, 32, 0}, {70, 78, 0}}},
    {"3d 13,4,1 39,32,-5 -70,78,90", {{13, 4, 1}, {39, 32, -5}, {-70, 78, 90}}},
    {"arc 13,4,2 r8 a-40..160", {fromAbove, fromAbove + up * 8}, {up.y, -up.x, 0}},
    {"arc 13,4,2 r8 a-10..130 down", {fromBelow, fromBelow + back * 8}, {up.y, up.x, 0}},
    {"circle 13,4,2 r8", {fromAbove}, {}, 8},
    {"circle 13,4,2 r8 down", {fromBelow}, {}, 8},
    {"ELLIPSE 13,4,2 30,40,0 r0.4", {{43, 44, 2}, {-17, -36, 2}}, {}, 20},
};

/// The end or vertex that is nearest to the reference, and its nearer neighbour. Random objects have no ties.
/// Ends count in space, vertices in the plane, where that differs.
std::pair<AcGePoint3d, AcGePoint3d> edgeOf(const Specimen& it, const AcGePoint3d& reference, bool inSpace) {
    const auto distance = [&](const AcGePoint3d& p) {
        return (inSpace && !it.isPolyline() ? p - reference : flat(p - reference)).length();
    };
    const std::size_t count = it.points.size();
    std::size_t base = 0;
    for (std::size_t i = 1; i < count; ++i)
        if (distance(it.points[i]) < distance(it.points[base])) base = i;
    const AcGePoint3d &before = it.points[(base + count - 1) % count], &after = it.points[(base + 1) % count];
    return {it.points[base], distance(before) < distance(after) ? before : after};
}

/// An object aligned to a line through `at`, or at that point of it, or of a circle to the right of it.
struct Trial {
    Trial(Entry entry, const Specimen& of, unsigned seed) : random{seed}, specimen{of}, job{entry, ""} {
        job.angle = random.number(0, 6.28);
        if (random.oneIn(2)) job.spacing = random.number(0.1, 30);
        along = unit(job.angle);
        job.at = random.point(100);
        job.at.z = 0;
        job.radius = 300;
        job.from = entry == Entry::atLine ? job.at + along : job.at - leftOf(along) * job.radius;
        DrawingText content = withBlocks();
        draw(content, specimen.text);
        content.line(job.at - along * 300, job.at + along * 300);
        sheet = std::make_unique<Sheet>(content);
        const std::vector<AcGePoint3d> before = shape();
        sheet->run([&] { job.run(*sheet, sheet->ids({sheet->at(0)}), sheet->id(1)); });
        EXPECT_EQ(job.status, 0);
        motion = Motion{before, shape()};
        EXPECT_TRUE(motion.isRigid);
    }
    double beside(const AcGePoint3d& p) const { return along.crossProduct(p - job.at).z; }
    double lengthwise(const AcGePoint3d& p) const { return along.dotProduct(p - job.at); }
    AcGeVector3d turned(const AcGeVector3d& way) const {
        return AcGeVector3d{way}.rotateBy(motion.turn, AcGeVector3d::kZAxis);
    }
    std::vector<AcGePoint3d> shape() const { return shapeOf(sheet->drawing(), sheet->at(0)); }
    /// The circle has no direction, and a block past a half turn ends oblique.
    void expectParallel(bool inSpace) const {
        if (specimen.is("circle") || (specimen.is("angle") && specimen.direction.y < 0)) return;
        const auto [base, second] = edgeOf(specimen, job.at, inSpace);
        const bool hasEnds = specimen.points.size() > 1 && !specimen.is("arc");
        const AcGeVector3d way = flat(hasEnds ? second - base : specimen.direction);
        EXPECT_NEAR(along.crossProduct(turned(way.normal())).z, 0, 1e-6);
    }

    shapes::Random random;
    const Specimen& specimen;
    Job job;
    AcGeVector3d along;
    std::unique_ptr<Sheet> sheet;
    Motion motion{{}, {}};
};

void forEachTrial(Entry entry, const std::function<void(const Trial&)>& check) {
    for (unsigned seed = 1; seed <= 60; ++seed)
        for (const Specimen& each : specimens) {
            SCOPED_TRACE(std::string{each.text} + ", seed " + std::to_string(seed) + ", entry " +
                         std::to_string(static_cast<int>(entry)));
            const Trial trial{entry, each, seed};
            check(trial);
            EXPECT_TRUE(trial.sheet->isUndoneToTheBytes());
        }
}

/// With its apex at the spacing and its hollow side beyond.
void expectArcShortOfTheLine(const Trial& trial) {
    const AcGePoint3d &centre = trial.specimen.points[0], &middle = trial.specimen.points[1];
    const double before = trial.beside(centre), radius = centre.distanceTo(middle);
    const double apex = trial.beside(trial.motion.image(middle));
    const double side = std::copysign(1, trial.beside(trial.motion.image(centre)) - apex);
    EXPECT_NEAR(trial.beside(trial.motion.image(centre)) - apex, radius * side, tolerance)
        << "apex on the axis";
    EXPECT_TRUE(side * before > 0 || std::abs(before) < radius / 2) << "side";
    if (trial.job.spacing) {
        EXPECT_NEAR(apex, *trial.job.spacing * side, tolerance);
    }
}

TEST(Laws, OfEachToALine) {
    forEachTrial(Entry::toLine, [](const Trial& trial) {
        const Specimen& it = trial.specimen;
        const AcGePoint3d from = it.is("arc") ? it.points[0] : edgeOf(it, trial.job.at, false).first,
                          now = trial.motion.image(from);
        EXPECT_NEAR(trial.lengthwise(now), trial.lengthwise(from), tolerance);
        trial.expectParallel(false);
        if (it.is("arc")) return expectArcShortOfTheLine(trial);
        if (!trial.job.spacing) {
            EXPECT_NEAR(now.distanceTo(from), 0, 1e-9);
            return;
        }
        const double stop = -std::copysign(*trial.job.spacing + it.toOutline, trial.beside(from));
        // Text that the line runs through goes on by its height.
        const double off = trial.beside(now) - stop;
        EXPECT_NEAR(off, std::abs(off) < 0.5 ? 0 : std::copysign(it.height, stop), tolerance);
    });
}

/// Where the middle of the edge has gone.
AcGePoint3d middleOf(const Trial& trial) {
    const Specimen& it = trial.specimen;
    const auto [base, second] = edgeOf(it, trial.job.at, true);
    if (it.is("arc")) return trial.motion.image(it.points[1]);
    if (it.points.size() > 1) return trial.motion.image(base + (second - base) / 2);
    double end = 0;
    if (it.is("text"))
        for (const AcGePoint3d& corner : trial.shape())
            end = std::max(end, trial.turned(it.direction).dotProduct(corner - trial.motion.image(base)));
    const db::Drawing& drawing = trial.sheet->drawing();
    if (it.is("mtext"))
        end = static_cast<const AcDbMText*>(drawing.liveEntity(drawing.find(trial.sheet->at(0))))
                  ->actualWidth();
    return trial.motion.image(base + it.direction * (end / 2));
}

TEST(Laws, OfEachAtAPoint) {
    for (const Entry entry : {Entry::atLine, Entry::atCircle})
        forEachTrial(entry, [](const Trial& trial) {
            const auto& by = trial.job.spacing;
            const AcGePoint3d now = middleOf(trial);
            EXPECT_NEAR(trial.lengthwise(now), 0, tolerance);
            EXPECT_NEAR(trial.beside(now), by ? *by + trial.specimen.toOutline : 0, tolerance);
            trial.expectParallel(true);
        });
}

} // namespace
} // namespace qx::tests
