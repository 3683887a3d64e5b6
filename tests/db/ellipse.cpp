#include "dbelipse.h"
#include "drawings/DrawingText.h"

#include <numbers>

using namespace drawings;

namespace {

constexpr double pi = std::numbers::pi;

std::string told(const AcGePoint3d& p) { return shapes::text(qx::shape::Box{p, p}); }

/// "x..x y..y z..z" of the start, the end, and whether it is closed.
std::string endsOf(const AcDbEllipse& ellipse) {
    AcGePoint3d start, end;
    EXPECT_EQ(ellipse.getStartPoint(start), Acad::eOk);
    EXPECT_EQ(ellipse.getEndPoint(end), Acad::eOk);
    return told(start) + " to " + told(end) + (ellipse.isClosed() ? " closed" : "");
}

TEST(Ellipse, isReadAsItStands) {
    const struct {
        const char* name;
        const char* groups;
        const char* extents;
        const char* ends;
    } cases[] = {
        {"whole", "10 1.0|20 2.0|11 4.0|40 0.5|41 0.0|42 6.283185307179586", "-3..5 0..4 0..0",
         "5..5 2..2 0..0 to 5..5 2..2 0..0 closed"},
        {"parameters left out", "10 1.0|20 2.0|11 4.0|40 0.5", "-3..5 0..4 0..0",
         "5..5 2..2 0..0 to 5..5 2..2 0..0 closed"},
        {"a turn that was rounded", "11 4.0|40 0.5|42 6.28318530718", "-4..4 -2..2 0..0",
         "4..4 0..0 0..0 to 4..4 0..0 0..0 closed"},
        {"a quarter", "11 4.0|40 0.5|42 1.5707963267948966", "0..4 0..2 0..0",
         "4..4 0..0 0..0 to 0..0 2..2 0..0"},
        {"over the start", "11 4.0|40 0.5|41 4.71238898038469|42 1.5707963267948966", "0..4 -2..2 0..0",
         "0..0 -2..-2 0..0 to 0..0 2..2 0..0"},
        {"seen from below", "11 4.0|40 0.5|42 1.5707963267948966|210 0|220 0|230 -1", "0..4 -2..0 0..0",
         "4..4 0..0 0..0 to 0..0 -2..-2 0..0"},
        {"upright", "11 4.0|40 0.5|210 0|220 -1|230 0", "-4..4 0..0 -2..2",
         "4..4 0..0 0..0 to 4..4 0..0 0..0 closed"},
        {"a normal of any length", "11 4.0|40 0.5|230 7", "-4..4 -2..2 0..0",
         "4..4 0..0 0..0 to 4..4 0..0 0..0 closed"},
        {"a circle", "11 3.0|21 4.0|40 1.0", "-5..5 -5..5 0..0", "3..3 4..4 0..0 to 3..3 4..4 0..0 closed"},
        {"the minor axis is the longer one", "11 2.0|40 2.0", "-2..2 -4..4 0..0",
         "2..2 0..0 0..0 to 2..2 0..0 0..0 closed"},
        {"flat", "11 2.0|40 0.0", "-2..2 0..0 0..0", "2..2 0..0 0..0 to 2..2 0..0 0..0 closed"},
        {"axis along the normal", "31 2.0|40 0.5", "0..0 0..0 -2..2",
         "0..0 0..0 2..2 to 0..0 0..0 2..2 closed"},
        {"no axis", "10 1.0|40 0.5", "1..1 0..0 0..0", "1..1 0..0 0..0 to 1..1 0..0 0..0 closed"},
    };
    for (const auto& each : cases) {
        const auto drawing = read(DrawingText{.entities = {std::string{"ELLIPSE|"} + each.groups}}.bytes());
        EXPECT_EQ(extents(*drawing, 0x100), each.extents) << each.name;
        AcDbObjectPointer<AcDbEllipse> ellipse{idOf(*drawing, 0x100)};
        ASSERT_EQ(ellipse.openStatus(), Acad::eOk);
        EXPECT_EQ(endsOf(*ellipse), each.ends) << each.name;
    }
}

TEST(Ellipse, tellsItsAxesAndAngles) {
    const auto drawing = read(
        DrawingText{.entities = {"ELLIPSE|11 3.0|21 4.0|40 0.5|41 0.7853981633974483|42 7.0|230 2"}}.bytes());
    AcDbObjectPointer<AcDbEllipse> ellipse{idOf(*drawing, 0x100)};
    EXPECT_DOUBLE_EQ(ellipse->majorRadius(), 5);
    EXPECT_DOUBLE_EQ(ellipse->minorRadius(), 2.5);
    EXPECT_TRUE(ellipse->minorAxis().isEqualTo({-2, 1.5, 0}));
    EXPECT_DOUBLE_EQ(ellipse->startAngle(), std::atan(0.5)) << "an angle, not the parameter";
    EXPECT_DOUBLE_EQ(ellipse->endAngle(), 2 * pi + std::atan2(0.5 * std::sin(7.0), std::cos(7.0)));
}

TEST(Ellipse, isMadeFromAngles) {
    const AcDbEllipse whole{{1, 2, 3}, AcGeVector3d::kZAxis, {0, 4, 0}, 0.5};
    EXPECT_EQ(endsOf(whole), "1..1 6..6 3..3 to 1..1 6..6 3..3 closed");
    const AcDbEllipse part{{0, 0, 0}, -AcGeVector3d::kZAxis, {4, 0, 0}, 0.5, std::atan(0.5), pi};
    EXPECT_DOUBLE_EQ(part.startAngle(), std::atan(0.5));
    EXPECT_DOUBLE_EQ(part.endAngle(), pi);
    EXPECT_EQ(endsOf(part), "2.82843..2.82843 -1.41421..-1.41421 0..0 to -4..-4 0..0 0..0");
}

TEST(Ellipse, newOneIsWrittenAndReadAgain) {
    auto drawing = read(DrawingText{}.bytes());
    auto* made = new AcDbEllipse{{1, 2, 3}, -AcGeVector3d::kZAxis, {4, 0, 0}, 0.5, 0, pi};
    const std::string ends = endsOf(*made);
    const auto handle = drawing->append(drawing->modelSpace(), made)->handle;
    made->close();
    drawing = read(drawing->toBytes());
    AcDbObjectPointer<AcDbEllipse> ellipse{idOf(*drawing, handle)};
    ASSERT_EQ(ellipse.openStatus(), Acad::eOk);
    EXPECT_EQ(endsOf(*ellipse), ends);
}

} // namespace
