// What is refused: every opening and every transformation of every kind of object made to fail once.
#include "objectalign/alignAtPoint.h"
#include "objectalign/alignToLine.h"
#include "objectalign/crossing.h"
#include "tests/objectalign/Specimen.h"

#include <gtest/gtest.h>

namespace qx::tests {
namespace {
using namespace objectalign;

enum class Step { toLine, atLine, atCircle };
constexpr Step steps[] = {Step::toLine, Step::atLine, Step::atCircle};

/// Sets the object off by 2 from the x axis or from a circle under the origin.
int run(Step step, AcDbObjectId id, AcDbObjectId lineId, const AcDbEntity& line) {
    AcGePoint3d landing;
    switch (step) {
    case Step::toLine:
        return alignObjectToBaseLine(id, {0, 0}, 0, 2, true, line, landing);
    case Step::atLine:
        return alignObjectToGivenLine(id, 0, 2, true, {0, 0, 0}, {1, 0, 0}, lineId);
    default:
        return alignObjectToGivenCircle(id, 0, 2, true, {0, 0, 0}, {0, -40, 0}, 40);
    }
}

/// Objects of every kind, handed over one by one together with what they are aligned to.
struct Faulty {
    explicit Faulty(unsigned seed) : random{seed} {}

    shapes::Random random;
    DrawingText content = withBlocks();
    const std::vector<Specimen> specimens = oneOfEach(content, random);
    const Handle line = content.line({-50, 0, 0}, {50, 0, 0});
    const OpenedDrawing drawing{content};
};

// What was refused is answered, and it is the last thing that happens to the object.
TEST(Faults, StopTheStepAndAreAnswered) {
    using Action = db::Drawing::Action;
    const auto refusal = Acad::eNotApplicable;
    for (const Step step : steps)
        for (unsigned kind = 0; kind < static_cast<unsigned>(Specimen::Kind::count); ++kind)
            for (int k = 0, requests = 1; k < requests; ++k) {
                const Faulty scene{7};
                const Specimen& object = scene.specimens[kind];
                const Watched watched{scene.drawing, object.handle};
                const std::string name = "step " + std::to_string(static_cast<int>(step)) + ", kind " +
                                         std::to_string(kind) + ", request " + std::to_string(k);
                const AcDbObjectPointer<AcDbEntity> line{scene.drawing.id(scene.line)};
                scene.drawing->history().begin("align");
                int asked = 0, later = 0;
                bool isRefusedChange = false;
                std::string atRefusal;
                scene.drawing->setFault([&](Action action, const db::Record*) {
                    if (asked > k && action == Action::transform) ++later;
                    if (asked++ != k) return Acad::eOk;
                    isRefusedChange = action != Action::openForRead;
                    atRefusal = scene.drawing->toBytes();
                    return refusal;
                });
                const int status =
                    run(step, scene.drawing.id(object.handle), scene.drawing.id(scene.line), *line.object());
                scene.drawing->setFault(nullptr);
                requests = asked;

                EXPECT_EQ(scene.drawing->openCount(), 1u) << name;
                EXPECT_TRUE(watched.motion().isRigid) << name;
                if (isRefusedChange || k == 0) {
                    EXPECT_EQ(status, refusal) << name;
                    EXPECT_EQ(later, 0) << name;
                    EXPECT_EQ(scene.drawing->toBytes(), atRefusal) << name;
                }
                scene.drawing->history().end();
                scene.drawing->history().undo();
                EXPECT_EQ(scene.drawing->toBytes(), scene.content.bytes()) << name;
            }
}

TEST(Refusals, LeaveEveryKindOfObjectAsItIs) {
    for (const Step step : steps)
        for (unsigned kind = 0; kind < static_cast<unsigned>(Specimen::Kind::count); ++kind) {
            shapes::Random random{kind + 1};
            DrawingText content = withBlocks();
            const Specimen object = drawn(content, random, static_cast<Specimen::Kind>(kind));
            const Handle line = content.line({-50, 0, 0}, {50, 0, 0});
            std::string& snippet = content.entities[0];
            snippet.insert(snippet.find('|'), "|100 AcDbEntity|8 LOCKED");
            if (const auto layer = snippet.find("|8 0"); layer != snippet.npos) snippet.erase(layer, 4);
            const OpenedDrawing drawing{content};
            const AcDbObjectPointer<AcDbEntity> baseLine{drawing.id(line)};
            const auto status = [&] {
                return run(step, drawing.id(object.handle), drawing.id(line), *baseLine.object());
            };
            const std::string name =
                "step " + std::to_string(static_cast<int>(step)) + ", kind " + std::to_string(kind);
            EXPECT_EQ(status(), Acad::eOnLockedLayer) << name;
            EXPECT_EQ(drawing->toBytes(), content.bytes()) << name;
            EXPECT_EQ(drawing->openCount(), 1u) << name;
        }
}

TEST(Refusals, OfWhatIsNoObjectToAlign) {
    DrawingText content = withBlocks();
    const Handle erased = content.line({1, 2, 0}, {3, 4, 0}), line = content.line({-50, 0, 0}, {50, 0, 0});
    const Handle group = content.group("G", {line});
    const OpenedDrawing drawing{content};
    ASSERT_EQ(erase(*drawing, erased), Acad::eOk);
    const std::string before = drawing->toBytes();
    const AcDbObjectPointer<AcDbEntity> baseLine{drawing.id(line)};
    for (const Step step : steps) {
        const auto status = [&](AcDbObjectId id) {
            return run(step, id, drawing.id(line), *baseLine.object());
        };
        EXPECT_EQ(status(drawing.id(erased)), Acad::eWasErased);
        EXPECT_EQ(status(AcDbObjectId::kNull), Acad::eNullObjectId);
        EXPECT_EQ(status(drawing.id(group)), Acad::eNotThatKindOfClass);
        EXPECT_EQ(status(drawing.id(line)), Acad::eWasOpenForRead) << "the line that others are aligned to";
    }
    EXPECT_EQ(drawing->toBytes(), before);
    bool isAcross = false;
    EXPECT_EQ(findMeeting(drawing.id(erased), drawing.id(line), isAcross), Acad::eWasErased);
    EXPECT_EQ(findMeeting(drawing.id(line), drawing.id(erased), isAcross), Acad::eWasErased);
    EXPECT_EQ(findInside(drawing.id(erased), {1, 2, 0}, 9, isAcross), Acad::eWasErased);
    EXPECT_FALSE(isAcross);
}

// Beyond the largest coordinate the drawing refuses; what has been turned stays turned, nothing is lost.
TEST(Refusals, OfPlacesThatAreTooFar) {
    for (const Step step : {Step::atLine, Step::atCircle}) {
        const Faulty scene{3};
        for (const Specimen& each : scene.specimens) {
            const Watched watched{scene.drawing, each.handle};
            const AcDbObjectId id = scene.drawing.id(each.handle);
            const int status =
                step == Step::atLine
                    ? alignObjectToGivenLine(id, 0, 1e16, true, {}, {1, 0, 0}, scene.drawing.id(scene.line))
                    : alignObjectToGivenCircle(id, 0, 1e16, true, {}, {0, -40, 0}, 40);
            EXPECT_EQ(status, Acad::eInvalidInput);
            EXPECT_TRUE(watched.motion().isRigid);
        }
    }
}
} // namespace
} // namespace qx::tests
