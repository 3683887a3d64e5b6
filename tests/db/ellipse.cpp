#include "dbelipse.h"
#include "drawings/DrawingText.h"

#include <array>
#include <numbers>

using namespace drawings;

namespace {

constexpr double pi = std::numbers::pi;

/// Start and end, and whether it is closed.
std::string endsOf(const AcDbEllipse& ellipse) {
    std::array<AcGePoint3d, 2> ends;
    EXPECT_EQ(ellipse.getStartPoint(ends[0]), Acad::eOk);
    EXPECT_EQ(ellipse.getEndPoint(ends[1]), Acad::eOk);
    return shapes::pointsText(ends) + (ellipse.isClosed() ? "closed" : "");
}

TEST(Ellipse, isReadAsItStands) {
    const struct {
        std::string groups;
        const char *extents, *ends;
    } cases[] = {
        {"10 1.0|20 2.0|11 4.0|40 0.5|41 0.0|42 6.283185307179586", "-3..5 0..4 0..0", "5,2 5,2 closed"},
        {"10 1.0|20 2.0|11 4.0|40 0.5", "-3..5 0..4 0..0", "5,2 5,2 closed"},
        {"11 4.0|40 0.5|42 6.28318530718", "-4..4 -2..2 0..0", "4,0 4,0 closed"},
        {"11 4.0|40 0.5|41 4.71238898038469|42 1.5707963267948966", "0..4 -2..2 0..0", "0,-2 0,2 "},
        {"11 4.0|40 0.5|42 1.5707963267948966|210 0|220 0|230 -1", "0..4 -2..0 0..0", "4,0 0,-2 "},
        {"11 4.0|40 0.5|210 0|220 -1|230 0", "-4..4 0..0 -2..2", "4,0 4,0 closed"},
        {"11 3.0|21 4.0|40 1.0", "-5..5 -5..5 0..0", "3,4 3,4 closed"},
        {"11 3.0|21 4.0", "-5..5 -5..5 0..0", "3,4 3,4 closed"},
        {"11 2.0|40 2.0", "-2..2 -4..4 0..0", "2,0 2,0 closed"},
        {"11 2.0|40 0.0", "-2..2 0..0 0..0", "2,0 2,0 closed"},
        {"31 2.0|40 0.5", "0..0 0..0 -2..2", "0,0,2 0,0,2 closed"}, // its axis along the normal
        {"10 1.0|40 0.5", "1..1 0..0 0..0", "1,0 1,0 closed"},
    };
    for (const auto& each : cases) {
        const auto drawing = read({.entities = {"ELLIPSE|" + each.groups}});
        EXPECT_EQ(extents(*drawing, 0x100), each.extents) << each.groups;
        AcDbObjectPointer<AcDbEllipse> ellipse{idOf(*drawing, 0x100)};
        EXPECT_EQ(endsOf(*ellipse), each.ends) << each.groups;
    }
}

TEST(Ellipse, tellsItsAxesAndAngles) {
    const auto drawing =
        read({.entities = {"ELLIPSE|11 3.0|21 4.0|40 0.5|41 0.7853981633974483|42 7.0|230 2"}});
    AcDbObjectPointer<AcDbEllipse> ellipse{idOf(*drawing, 0x100)};
    EXPECT_DOUBLE_EQ(ellipse->majorRadius(), 5);
    EXPECT_DOUBLE_EQ(ellipse->minorRadius(), 2.5);
    EXPECT_TRUE(ellipse->minorAxis().isEqualTo({-2, 1.5, 0}));
    EXPECT_DOUBLE_EQ(ellipse->startAngle(), std::atan(0.5)) << "an angle, not the parameter";
    EXPECT_DOUBLE_EQ(ellipse->endAngle(), 2 * pi + std::atan2(0.5 * std::sin(7.0), std::cos(7.0)));
}

TEST(Ellipse, isMadeFromAngles) {
    const AcDbEllipse whole{{1, 2, 3}, AcGeVector3d::kZAxis, {0, 4, 0}, 0.5};
    EXPECT_EQ(endsOf(whole), "1,6,3 1,6,3 closed");
    const double half = std::atan(0.5);
    const AcDbEllipse part{{0, 0, 0}, -AcGeVector3d::kZAxis, {4, 0, 0}, 0.5, half, pi - half};
    EXPECT_DOUBLE_EQ(part.startAngle(), half);
    EXPECT_DOUBLE_EQ(part.endAngle(), pi - half);
    EXPECT_EQ(endsOf(part), "2.828427,-1.414214 -2.828427,-1.414214 ");
    const auto drawing = read(DrawingText{});
    auto* made = new AcDbEllipse{{1, 2, 3}, -AcGeVector3d::kZAxis, {4, 0, 0}, 0.5, 0, pi};
    const auto handle = drawing->append(drawing->modelSpace(), made)->handle;
    made->close();
    const auto again = read(drawing->toBytes());
    AcDbObjectPointer<AcDbEllipse> ellipse{idOf(*again, handle)};
    ASSERT_EQ(ellipse.openStatus(), Acad::eOk);
    EXPECT_EQ(endsOf(*ellipse), "5,2,3 -3,2,3 ");
}

} // namespace
