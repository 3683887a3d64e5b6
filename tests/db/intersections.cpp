#include "drawings/DrawingText.h"

#include "db/Violation.h"
#include "dbpl.h"

using namespace drawings;

namespace {

std::string text(const AcGePoint3dArray& points) {
    const std::string all = shapes::pointsText(points);
    return all.substr(0, all.size() - !all.empty());
}

std::string meet(const AcDbEntity& a, const AcDbEntity& b, AcDb::Intersect type) {
    AcGePoint3dArray points;
    const Acad::ErrorStatus status = a.intersectWith(&b, type, points);
    return status == Acad::eOk ? text(points) : "status " + std::to_string(status);
}

AcDbLine from(double x, double y, double endX, double endY, double z = 0) {
    return {{x, y, z}, {endX, endY, z}};
}

struct EntityCase {
    const char* snippet;
    AcDbLine line;
    AcDb::Intersect type; ///< with the line as `this`
    const char* fromLine;
    const char* fromEntity = fromLine;
};

AcDb::Intersect swapped(AcDb::Intersect type) {
    return type == AcDb::kExtendThis ? AcDb::kExtendArg : type == AcDb::kExtendArg ? AcDb::kExtendThis : type;
}

// A line that is in no drawing against each kind of entity that is.
TEST(EntityIntersections, ofALineWithAnything) {
    const auto none = AcDb::kOnBothOperands, self = AcDb::kExtendThis, other = AcDb::kExtendArg,
               both = AcDb::kExtendBoth;
    const char *circle = "CIRCLE|10 0|20 0|40 5", *block = "INSERT|2 B|10 10|20 0|41 2";
    const char* zigzag = "LWPOLYLINE|90 5|70 0|10 0|20 1|10 2|20 -1|10 4|20 0|10 6|20 2|10 8|20 -2";
    const char* square = "LWPOLYLINE|90 4|70 1|10 0|20 0|10 4|20 0|10 4|20 4|10 0|20 4";
    const char* slot = "LWPOLYLINE|90 2|70 1|10 0|20 0|42 1|10 4|20 0|42 1";
    const char* hook = "LWPOLYLINE|90 3|70 0|10 0|20 0|10 4|20 0|42 1|10 4|20 4";
    const char* mirrored = "ARC|10 -5.0|20 0.0|40 5.0|50 0.0|51 90.0|210 0.0|220 0.0|230 -1.0";
    const char* below = "LWPOLYLINE|90 2|70 0|38 -2|10 -1|20 5|10 -9|20 5|210 0.0|220 0.0|230 -1.0";
    const char* ray = "RAY|10 0.0|20 0.0|11 1.0|21 0.0";
    const char* spline = "SPLINE|70 4|71 2|40 0|40 0|40 0|40 1|40 1|40 1|41 1|41 0.7071067811865476|41 1"
                         "|10 4.0|20 0.0|10 4.0|20 4.0|10 0.0|20 4.0";
    const EntityCase cases[] = {
        {"LINE|10 5|20 -1|11 5|21 1", from(0, 0, 9, 0), none, "5,0"},
        {"LINE|10 5|20 -1|30 1|11 5|21 1|31 1", from(0, 0, 9, 0), both, ""},
        {"LINE|10 5|20 1|11 5|21 2", from(0, 0, 9, 0), other, "5,0"},
        {circle, from(9, 3, 0, 3), none, "4,3"},
        {circle, from(9, 3, 0, 3), self, "4,3 -4,3"},
        {circle, from(9, -3, -9, -3), none, "4,-3 -4,-3", "-4,-3 4,-3"},
        {mirrored, from(0, 3, 9, 3), none, "1,3"},
        {mirrored, from(0, 3, 9, 3), other, "1,3 9,3"},
        {below, from(5, 0, 5, 9, 2), none, "5,5,2"},
        {zigzag, from(-9, 0, 9, 0), none, "1,0 4,0 7,0"},
        {zigzag, from(9, 0, -9, 0), none, "7,0 4,0 1,0", "1,0 4,0 7,0"},
        {zigzag, from(-9, 3, 9, 3), both, "-2,3"},
        {zigzag, from(-9, -5, 10, -5), other, "9.5,-5"},
        {square, from(-1, -1, 5, 5), none, "0,0 4,4"},
        {square, from(-1, 4, 5, 4), none, "0,4 4,4", "4,4 0,4"},
        {slot, from(2, -9, 2, 9), none, "2,-2 2,2"},
        {hook, from(-9, 2, 3, 2), other, ""},
        {hook, from(-2, -9, -2, 9), other, "-2,0"},
        {"POINT|10 3|20 0", from(0, 0, 9, 0), none, "3,0"},
        {block, from(0, 1, 20, 1), none, "10,1 12,1"},
        {block, from(0, 5, 20, 5), both, ""},
        {"TEXT|10 0|20 0|40 2|1 HH", from(-9, 1, 9, 1), both, "0.2,1 3.2,1", "3.2,1 0.2,1"},
        {"TEXT|10 0|20 0|40 2|1 ", from(-9, 1, 9, 1), none, ""},
        {spline, from(0, 0, 1, 1), none, ""},
        {spline, from(0, 0, 1, 1), self, "2.828427,2.828427"},
        {ray, from(-7, -1, -7, 1), none, ""},
        {ray, from(-7, -1, -7, 1), self, ""},
        {ray, from(-7, -1, -7, 1), other, "-7,0"},
        {"WIPEOUT|10 1", from(0, 0, 9, 0), none, "status 2"},
    };
    for (const EntityCase& c : cases) {
        DrawingText drawingText{.entities = {c.snippet},
                                .blocks = {{"B", {"LINE|10 0|20 0|11 0|21 2", "LINE|10 1|20 0|11 1|21 2"}}}};
        const auto drawing = read(drawingText);
        const AcDbObjectPointer<AcDbEntity> entity{idOf(*drawing, DrawingText::firstEntity)};
        ASSERT_EQ(entity.openStatus(), Acad::eOk) << c.snippet;
        EXPECT_EQ(meet(c.line, *entity, c.type), c.fromLine) << c.snippet;
        EXPECT_EQ(meet(*entity, c.line, swapped(c.type)), c.fromEntity) << c.snippet;
    }
}

TEST(EntityIntersections, refuseWhatTheyCantDo) {
    const auto drawing =
        read({.entities = {"LINE|10 0|20 0|11 9|21 0", "LWPOLYLINE|90 2|70 0|10 5|20 -1|10 5|20 1",
                           "SPLINE|71 1|40 0|40 0|40 1|40 1|10 0.0|10 9.0"}});
    const AcDbLine line{{0, 0, 0}, {9, 0, 0}};
    AcGePoint3dArray points;
    points.append({1, 2, 3});
    EXPECT_EQ(line.intersectWith(nullptr, AcDb::kOnBothOperands, points), Acad::eInvalidInput);
    AcDbEntity *resident = nullptr, *polyline = nullptr;
    ASSERT_EQ(acdbOpenAcDbEntity(resident, idOf(*drawing, 0x100), AcDb::kForRead), Acad::eOk);
    ASSERT_EQ(acdbOpenAcDbEntity(polyline, idOf(*drawing, 0x101), AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(polyline->intersectWith(polyline, AcDb::kOnBothOperands, points), Acad::eNotImplementedYet);
    const AcDbObjectPointer<AcDbEntity> spline{idOf(*drawing, 0x102)};
    EXPECT_EQ(spline->intersectWith(polyline, AcDb::kOnBothOperands, points), Acad::eNotImplementedYet);
    EXPECT_EQ(resident->intersectWith(polyline, AcDb::kOnBothOperands, points), Acad::eOk);
    EXPECT_EQ(text(points), "1,2,3 5,0") << "appended";
    resident->close();
    EXPECT_THROW(resident->intersectWith(&line, AcDb::kOnBothOperands, points), qx::db::Violation);
    EXPECT_THROW(line.intersectWith(resident, AcDb::kOnBothOperands, points), qx::db::Violation);
    EXPECT_EQ(points.length(), 2);
    polyline->close();
}

} // namespace
