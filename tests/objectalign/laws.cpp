// What holds whatever the drawing: tried on random ones with every kind of object. A failure names the seed.
#include "dbmtext.h"
#include "objectalign/alignAtPoint.h"
#include "objectalign/alignToLine.h"
#include "tests/objectalign/Specimen.h"

#include <gtest/gtest.h>

#include <functional>

namespace qx::tests {
namespace {
using namespace objectalign;

constexpr unsigned seeds = 60;
constexpr double tolerance = 2e-5; // the angles are cut to seven decimals

/// A drawing, a line in it that runs through `point`, and how things are to be aligned to it.
class RandomScene {
public:
    explicit RandomScene(unsigned seed) : random_{seed} {
        point.z = 0;
        specimens = oneOfEach(content, random_);
        baseLine = content.line(point - along * 30, point + along * 30);
        drawing = std::make_unique<OpenedDrawing>(content);
        for (const Specimen& each : specimens) watched_.emplace_back(*drawing, each.handle);
        handles_ = handles();
        (*drawing)->history().begin("align");
    }

    using Align = std::function<int(AcDbObjectId)>;
    using Visit = std::function<void(const Specimen&, const Motion&, const std::string&)>;

    /// Aligns all, and visits them one by one.
    void check(unsigned seed, bool adjustSpacing, const Align& align, const Visit& visit) {
        for (std::size_t i = 0; i < specimens.size(); ++i) {
            const std::string name = "seed " + std::to_string(seed) + ", kind " + std::to_string(i) +
                                     (adjustSpacing ? ", set off" : "");
            EXPECT_EQ(align(drawing->id(specimens[i].handle)), Acad::eOk) << name;
            const Motion motion = watched_[i].motion();
            EXPECT_TRUE(motion.isRigid) << name;
            visit(specimens[i], motion, name);
        }
        EXPECT_EQ(handles(), handles_) << "seed " << seed;
        (*drawing)->history().end();
        (*drawing)->history().undo();
        EXPECT_EQ((*drawing)->toBytes(), content.bytes()) << "seed " << seed;
    }

    /// How far to the left of the line, and how far along it.
    double beside(const AcGePoint3d& p) const { return along.crossProduct(p - point).z; }
    double lengthwise(const AcGePoint3d& p) const { return along.dotProduct(p - point); }
    /// Corners of the drawn letters.
    std::vector<AcGePoint3d> letters(const Specimen& each) const {
        return RecordedShape{*(*drawing)->liveEntity((*drawing)->find(each.handle))}.points;
    }

private:
    std::vector<Handle> handles() const {
        std::vector<Handle> all;
        (*drawing)->forEachInModelSpace([&](const db::Record* each) { all.push_back(each->handle); });
        return all;
    }

    shapes::Random random_;
    std::vector<Watched> watched_;
    std::vector<Handle> handles_;

public:
    DrawingText content = withBlocks();
    const double angle = random_.number(0, 6.28), spacing = random_.number(0.1, 30);
    const AcGeVector3d along{std::cos(angle), std::sin(angle), 0};
    AcGePoint3d point = random_.point(100);
    std::vector<Specimen> specimens;
    Handle baseLine;
    std::unique_ptr<OpenedDrawing> drawing;
};

AcGeVector3d turned(const Motion& motion, const AcGeVector3d& v) {
    return motion.image(AcGePoint3d::kOrigin + v) - motion.image(AcGePoint3d::kOrigin);
}

void expectParallel(const RandomScene& scene, const AcGeVector3d& direction, const std::string& name) {
    const AcGeVector3d flat{direction.x, direction.y, 0};
    EXPECT_NEAR(scene.along.crossProduct(flat.normal()).z, 0, 1e-6) << name;
}

/// By how much text has to go on from where it first stops beside the line, so that the line does not run
/// through its letters: by nothing or their height.
double clearance(const RandomScene& scene, const Specimen& text, double stop, double now) {
    const double further = std::copysign(text.height, stop);
    const double back = std::abs(now - stop) > text.height / 2 ? further : 0;
    const auto corners = scene.letters(text);
    for (std::size_t i = 0; i + 3 < corners.size(); i += 4) { // four per line of text
        double low = 1e9, high = -1e9;
        for (std::size_t k = i; k < i + 4; ++k) {
            low = std::min(low, scene.beside(corners[k]) - back);
            high = std::max(high, scene.beside(corners[k]) - back);
        }
        if (corners[i].z == 0 && low <= 0 && high >= 0) return further;
    }
    return 0;
}

/// With its apex at the spacing and its hollow side beyond. It stays on its side, unless its centre is nearer
/// to the line than half its radius.
void expectArcShortOfTheLine(const RandomScene& scene, const Specimen& arc, const Motion& motion, bool adjust,
                             const std::string& name) {
    const double before = scene.beside(arc.points[0]);
    const double centre = scene.beside(motion.image(arc.points[0]));
    const double apex = scene.beside(motion.image(arc.points[1]));
    const double radius = arc.points[0].distanceTo(arc.points[1]);
    const double side = std::copysign(1, centre - apex);
    EXPECT_NEAR(centre - apex, radius * side, tolerance) << name << ": apex on the axis";
    EXPECT_TRUE(side * before > 0 || std::abs(before) < radius / 2) << name << ": side";
    if (adjust) {
        EXPECT_NEAR(apex, scene.spacing * side, tolerance) << name;
    }
}

void expectBaseBeyondTheLine(const RandomScene& scene, const Specimen& each, double before, double now,
                             const std::string& name) {
    const double stop = -std::copysign(scene.spacing + each.toOutline, before);
    const double further = each.height > 0 ? clearance(scene, each, stop, now) : 0;
    EXPECT_NEAR(now, stop + further, tolerance) << name;
}

TEST(Laws, WhatIsAlignedToALineEndsParallelAtItsDistance) {
    for (unsigned seed = 1; seed <= seeds; ++seed)
        for (const bool adjust : {false, true}) {
            RandomScene scene{seed};
            const AcDbObjectPointer<AcDbEntity> line{scene.drawing->id(scene.baseLine)};
            const auto align = [&](AcDbObjectId id) {
                AcGePoint3d landing;
                return alignObjectToBaseLine(id, {scene.point.x, scene.point.y}, scene.angle, scene.spacing,
                                             adjust, *line.object(), landing);
            };
            scene.check(
                seed, adjust, align, [&](const Specimen& each, const Motion& motion, const auto& name) {
                    const EdgeModel edge = each.edge(scene.point, false);
                    const AcGePoint3d base = each.isArc() ? each.points[0] : edge.base,
                                      now = motion.image(base);
                    EXPECT_NEAR(scene.lengthwise(now), scene.lengthwise(base), tolerance) << name;
                    if (each.endsParallel)
                        expectParallel(scene, turned(motion, each.isArc() ? each.direction : edge.direction),
                                       name);
                    if (!adjust) {
                        EXPECT_NEAR(now.distanceTo(base), 0, 1e-9) << name;
                    }
                    if (each.isArc())
                        expectArcShortOfTheLine(scene, each, motion, adjust, name);
                    else if (adjust)
                        expectBaseBeyondTheLine(scene, each, scene.beside(base), scene.beside(now), name);
                });
        }
}

/// Where the middle of the edge has gone.
AcGePoint3d middle(const RandomScene& scene, const Specimen& each, const Motion& motion) {
    const EdgeModel edge = each.edge(scene.point, true);
    const AcGePoint3d base = motion.image(edge.base);
    const AcGeVector3d along = turned(motion, each.direction);
    switch (each.kind) {
    case Specimen::Kind::arc:
        return motion.image(each.points[1]);
    case Specimen::Kind::lines: {
        const AcDbObjectPointer<AcDbMText> text{scene.drawing->id(each.handle)};
        return base + along * (text->actualWidth() / 2);
    }
    case Specimen::Kind::text: {
        double end = 0;
        for (const AcGePoint3d& corner : scene.letters(each))
            end = std::max(end, along.dotProduct(corner - base));
        return base + along * (end / 2);
    }
    default:
        return each.points.size() > 1 ? motion.image(edge.base + (edge.second - edge.base) / 2) : base;
    }
}

TEST(Laws, WhatIsAlignedAtAPointHasTheMiddleOfItsEdgeThereOrToTheLeft) {
    for (unsigned seed = 1; seed <= seeds; ++seed)
        for (const bool adjust : {false, true})
            for (const bool isCircular : {false, true}) {
                RandomScene scene{seed};
                const AcGeVector3d left{-scene.along.y, scene.along.x, 0};
                const auto align = [&](AcDbObjectId id) {
                    return isCircular ? alignObjectToGivenCircle(id, scene.angle, scene.spacing, adjust,
                                                                 scene.point, scene.point - left * 40, 40)
                                      : alignObjectToGivenLine(id, scene.angle, scene.spacing, adjust,
                                                               scene.point, scene.point + scene.along,
                                                               scene.drawing->id(scene.baseLine));
                };
                const std::string curve = isCircular ? ", at a circle" : ", at a line";
                scene.check(seed, adjust, align,
                            [&](const Specimen& each, const Motion& motion, const std::string& name) {
                                const EdgeModel edge = each.edge(scene.point, true);
                                const AcGePoint3d now = middle(scene, each, motion);
                                const double distance = adjust ? scene.spacing + each.toOutline : 0;
                                EXPECT_NEAR(scene.lengthwise(now), 0, tolerance) << name << curve;
                                EXPECT_NEAR(scene.beside(now), distance, tolerance) << name << curve;
                                if (each.endsParallel)
                                    expectParallel(
                                        scene, turned(motion, each.isArc() ? each.direction : edge.direction),
                                        name + curve);
                            });
            }
}
} // namespace
} // namespace qx::tests
