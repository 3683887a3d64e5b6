#include "objectalign/alignmentLine.h"
#include "objectalign/angles.h"
#include "objectalign/baseLineDirection.h"
#include "objectalign/straightSegments.h"
#include "tests/objectalign/Sheet.h"

#include <gtest/gtest.h>

namespace qx::tests {
using namespace drawings;
namespace {
using namespace objectalign;

constexpr double perDegree = std::numbers::pi / 180;
constexpr const char* refusal = "\n请选择线段对象";
constexpr const char* itself = "itself";

TEST(AlignmentLines, OfWhatIsPicked) {
    const struct {
        const char* name;
        const char* picked;
        const char* pick;
        const char* line; ///< itself, or what is drawn
        double degrees;
    } cases[] = {
        {"rightwards", "line 0,0 10,0", "1,0", itself, 0},
        {"leftwards is level too", "line 10,0 0,0", "1,0", itself, 0},
        {"upwards", "line 0,0 0,10", "0,1", itself, 90},
        {"downwards points up", "line 0,10 0,0", "0,1", itself, 90},
        {"rising to the left", "line 0,0 -10,10", "0,0", itself, 135},
        {"falling to the right rises to the left", "line 0,0 10,-10", "0,0", itself, 135},
        {"a hair above level", "line 0,0 10,1e-9", "0,0", itself, 5.7e-9},
        {"a hair below level points left", "line 0,0 10,-1e-9", "0,0", itself, 180},
        {"too little to tell from level", "line 0,0 10,-1e-300", "0,0", itself, 0},
        {"no length", "line 3,3 3,3", "3,3", itself, 0},
        {"high above", "line 0,0,9 10,10,9", "0,0", "line 0,0 10,10", 45},
        {"one end off the ground", "line 10,10 0,0,9", "0,0", "line 10,10 0,0", 45},
        {"upright in space", "line 3,3 3,3,9", "0,0", "line 3,3 3,3", 0},
        {"on a locked layer", "line 0,0 0,10 LOCKED", "0,1", itself, 90},
        {"segment of a polyline", "lw 0,0 10,0 10,10", "9,5", "line 10,0 10,10", 90},
        {"the nearest, not the first near enough", "lw 0,0 10,0 10,4 0,4", "5,2.5", "line 10,4 0,4", 0},
        {"the first of equals", "lw 0,0 10,0 10,10", "10,0", "line 0,0 10,0", 0},
        {"by the segment, not by its carrier", "lw 0,0 10,0 10,10 50,30", "30,1", "line 10,10 50,30",
         26.565051},
        {"closing segment", "lw 0,0 20,0 20,20 closed", "10,10", "line 20,20 0,0", 45},
        {"an open one has none", "lw 0,0 20,0 20,20", "5,4.9", "line 0,0 20,0", 0},
        {"a straight one near an arc", "lw 0,0 b1 10,0 10,10", "5,-5", "line 10,0 10,10", 90},
        {"vertices twice", "lw 0,0 0,0 0,10", "0,0", "line 0,0 0,10", 90},
        {"seen from below, high above", "lw 0,0 10,10 z9 down", "-5,5", "line 0,0 -10,10", 135},
        {"older polyline", "2d 0,0 10,0 10,10 closed z9", "5,5.1", "line 10,10 0,0", 45},
        {"polyline of arcs only", "lw 0,0 b1 10,0 b1 closed", "5,-5", nullptr, 0},
        {"one vertex", "lw 0,0", "0,0", nullptr, 0},
        {"spline-fit", "2d 0,0 0,0 10,0 9,9 spline", "5,0", nullptr, 0},
        {"polyline in space", "3d 0,0 10,0", "5,0", nullptr, 0},
        {"circle", "circle 0,0 r10", "10,0", nullptr, 0},
        {"text", "TEXT|10 0|20 0|40 2|1 A", "0,0", nullptr, 0},
    };
    for (const auto& each : cases) {
        Sheet sheet({each.picked});
        const std::string said = sheet.run([&] {
            ConstructionEntities construction;
            const auto found = analyseAlignmentLine(sheet.id(sheet.at(0)), pointOf(each.pick), construction);
            ASSERT_EQ(found.has_value(), each.line != nullptr) << each.name;
            const bool isItself = each.line == itself;
            EXPECT_EQ(sheet.drawn(), found && !isItself ? each.line : "") << each.name;
            if (!found) return;
            EXPECT_EQ(found->id == sheet.id(sheet.at(0)), isItself) << each.name;
            EXPECT_NEAR(found->angle / perDegree, each.degrees, 1e-6) << each.name;
            EXPECT_TRUE(found->angle >= 0 && found->angle < std::numbers::pi) << each.name;
            EXPECT_EQ(text(found->pick), each.pick) << each.name;
            construction.erase();
            EXPECT_EQ(sheet.drawn(), "") << each.name;
        });
        EXPECT_EQ(said, each.line ? "" : refusal) << each.name;
        EXPECT_TRUE(sheet.hasTheFilesBytes()) << each.name;
    }
}

TEST(AlignmentLines, OfWhatCannotBeOpenedThereIsNoneAndNothingIsSaid) {
    for (const char* const picked : {"line 0,0,9 10,10,9", "lw 0,0 10,0", "2d 0,0 10,0"})
        for (int k = 0;; ++k) {
            Sheet sheet({picked});
            const std::string said = sheet.run([&] {
                sheet.refuse(k);
                ConstructionEntities construction;
                const auto found = analyseAlignmentLine(sheet.id(sheet.at(0)), {0, 0}, construction);
                EXPECT_EQ(found.has_value(), !sheet.refused()) << picked << k;
                sheet.drawing().setFault(nullptr);
            });
            EXPECT_EQ(said, "") << picked << k;
            EXPECT_EQ(sheet.drawing().openCount(), 0u) << picked << k;
            EXPECT_TRUE(sheet.hasTheFilesBytes()) << picked << k;
            if (!sheet.refused()) break;
        }
    Sheet sheet({"line 0,0 10,0"});
    EXPECT_EQ(sheet.run([&] {
        ConstructionEntities construction;
        erase(sheet.drawing(), sheet.at(0));
        EXPECT_FALSE(analyseAlignmentLine(sheet.id(sheet.at(0)), {0, 0}, construction));
        EXPECT_FALSE(analyseAlignmentLine(AcDbObjectId::kNull, {0, 0}, construction));
    }),
              "");
}

TEST(AlignmentLines, BaseLinesWithoutADirectionLeaveTheOneGiven) {
    Sheet sheet({"line 1,1,5 4,5,9", "line 1,1,5 1,1,9", "circle 0,0 r1", "line 0,0 1,0"});
    const char* const directions[] = {"3,4", "7,8", "7,8", "7,8"};
    EXPECT_EQ(sheet.run([&] {
        erase(sheet.drawing(), sheet.at(3));
        for (std::size_t i = 0; i < 4; ++i) {
            AcGeVector2d direction{7, 8};
            EXPECT_EQ(readDirection(sheet.id(sheet.at(i)), direction), i == 3 ? Acad::eWasErased : Acad::eOk);
            EXPECT_EQ(text(AcGePoint2d::kOrigin + direction), directions[i]) << i;
        }
    }),
              "");
}

TEST(AlignmentLines, LeftIsAQuarterTurnThatIsCutShort) {
    EXPECT_EQ(text(AcGePoint2d::kOrigin + leftOf({0, 25}) * 1e6), "-1000000,0.0268");
    EXPECT_EQ(text(AcGePoint2d::kOrigin + leftOf({0, 0}) * 1e6), "0.0268,1000000");
    EXPECT_EQ(turnedTheShortWay(1.5707963), 1.5707963);
    EXPECT_EQ(turnedTheShortWay(1.5707964), 1.5707964 - 3.1415926);
    EXPECT_EQ(turnedTheShortWay(-6), -6);
    EXPECT_EQ(foldedEdgeAngle(3.1415926), 3.1415926);
    EXPECT_EQ(foldedEdgeAngle(3.1415927), 3.1415927 - 3.1415926);
}

} // namespace
} // namespace qx::tests
