#include "dbcurve.h"
#include "drawings/DrawingText.h"

#include <array>

using namespace drawings;
using qx::db::Drawing;

namespace {

const std::string bezierKnots = "|40 0|40 0|40 0|40 0|40 1|40 1|40 1|40 1";
const std::string quarterCircle =
    "SPLINE|70 4|71 2|40 0|40 0|40 0|40 1|40 1|40 1|41 1|41 0.7071067811865476|41 1"
    "|10 4.0|20 0.0|10 4.0|20 4.0|10 0.0|20 4.0";

/// One piece of that degree, straight.
std::string steep(int degree) {
    std::string text = "SPLINE|71 " + std::to_string(degree);
    for (int i = 0; i < 2 * (degree + 1); ++i) text += i <= degree ? "|40 0" : "|40 1";
    for (int i = 0; i <= degree; ++i) text += tag(10, i);
    return text;
}

/// Extents, start and end, and whether it is closed; or what was found instead.
std::string described(const std::string& entity) {
    const auto drawing = read({.entities = {entity}});
    AcDbObjectPointer<AcDbCurve> curve{idOf(*drawing, 0x100)};
    if (curve.openStatus() != Acad::eOk)
        return drawing->findings().empty() ? "" : drawing->findings().back().sentence.substr(0, 41);
    std::array<AcGePoint3d, 2> ends;
    EXPECT_EQ(curve->getStartPoint(ends[0]), Acad::eOk);
    EXPECT_EQ(curve->getEndPoint(ends[1]), Acad::eOk);
    return extents(*drawing, 0x100) + "; " + shapes::pointsText(ends) + (curve->isClosed() ? "closed" : "");
}

TEST(Splines, areReadAsTheyStand) {
    const std::string four = "|10 0.0|20 0.0|10 0.0|20 4.0|10 4.0|20 4.0|10 4.0|20 0.0";
    const std::string none = "the spline makes no curve of its knots, w";
    const std::pair<std::string, std::string> cases[] = {
        {"SPLINE|71 3" + bezierKnots + four, "0..4 0..3 0..0; 0,0 4,0 "},
        {"SPLINE|71 3|72 99|73 0|74 7" + bezierKnots + four, "0..4 0..3 0..0; 0,0 4,0 "}, // counts
        {"SPLINE|71 3" + four + bezierKnots, "0..4 0..3 0..0; 0,0 4,0 "},                 // another order
        {quarterCircle, "0..4 0..4 0..0; 4,0 0,4 "},
        {"SPLINE|71 1|40 0|40 0|40 1|40 1|10 1.0|20 2.0|10 3.0|30 5.0", "1..3 0..2 0..5; 1,2 3,0,5 "},
        // A closed one whose knots don't begin with a multiple one.
        {"SPLINE|70 3|71 2|40 -2|40 -1|40 0|40 1|40 2|40 3|40 4|40 5|40 6|10 0.0|20 0.0|10 4.0|20 0.0|10 "
         "4.0|20 4.0|10 0.0|20 4.0|10 0.0|20 0.0|10 4.0|20 0.0",
         "0..4 0..4 0..0; 2,0 2,0 closed"},
        // Through points.
        {"SPLINE|70 0|71 3|11 1.0|21 2.0|11 4.0|21 6.0", "1..4 2..6 0..0; 1,2 4,6 "},
        {"SPLINE|70 0|71 3|11 1.0|21 2.0|11 1.0|21 2.0", "1..1 2..2 0..0; 1,2 1,2 "},
        {"SPLINE|70 1|71 3|11 2.0|21 0.0|11 0.0|21 2.0|11 -2.0|21 0.0|11 0.0|21 -2.0",
         "-2..2 -2..2 0..0; 2,0 2,0 closed"},
        {"LEADER|72 0|10 1.0|20 2.0|10 4.0|20 3.0|10 6.0|20 3.0", "1..6 2..3 0..0; 1,2 6,3 "},
        {"LEADER|72 1|10 1.0|20 2.0|10 4.0|20 6.0", "1..4 2..6 0..0; 1,2 4,6 "},
        // What makes no curve.
        {"SPLINE|71 3", none},
        {"SPLINE|71 3" + bezierKnots + "|40 1" + four, none},
        {"SPLINE|71 3" + bezierKnots + four + "|41 1", none},
        {"SPLINE|71 3" + bezierKnots + four + "|41 1|41 1|41 0|41 1", none},
        {"SPLINE|71 3|40 0|40 0|40 0|40 1|40 0|40 1|40 1|40 1" + four, none},
        {"SPLINE|71 3|40 0|40 0|40 0|40 0|40 0|40 0|40 0|40 0" + four, none},
        {"SPLINE|71 26|40 0|10 0.0", none},
        {steep(26), "the spline is of degree 26, higher than 2"},
        {steep(25), "0..25 0..0 0..0; 0,0 25,0 "},
        {"SPLINE|71 3" + bezierKnots + four + "|10 x", "the value 43 lines further on is no numbe"},
    };
    for (const auto& [entity, expected] : cases) EXPECT_EQ(described(entity), expected) << entity;
}

// An arc of a circle, whose box is known wherever it is turned.
TEST(Splines, haveTightBoxes) {
    const auto drawing = read(DrawingText{.entities = {quarterCircle}}.bytes());
    for (int i = 0; i < 50; ++i) {
        const double angle = 0.13 * i, quarter = std::acos(-1) / 2;
        double low = std::min(std::cos(angle), std::cos(angle + quarter)),
               high = std::max(std::cos(angle), std::cos(angle + quarter));
        for (int k = 0; k < 40; ++k) {
            if (k * quarter > angle && k * quarter < angle + quarter && k % 4 == 0) high = 1;
            if (k * quarter > angle && k * quarter < angle + quarter && k % 4 == 2) low = -1;
        }
        AcDbObjectPointer<AcDbEntity> spline{idOf(*drawing, 0x100)};
        AcDbExtents box;
        ASSERT_EQ(spline->getGeomExtents(box), Acad::eOk);
        EXPECT_NEAR(box.minPoint().x, 4 * low, 1e-9) << i;
        EXPECT_NEAR(box.maxPoint().x, 4 * high, 1e-9) << i;
        spline->close();
        ASSERT_EQ(move(*drawing, 0x100, AcGeMatrix3d::rotation(0.13, AcGeVector3d::kZAxis)), Acad::eOk);
    }
}

} // namespace
