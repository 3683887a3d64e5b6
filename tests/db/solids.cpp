#include "db/RecordedShape.h"
#include "dbray.h"
#include "draw/SvgPen.h"
#include "drawings/DrawingText.h"
#include "shape/NearestSink.h"
#include "shape/WindowSink.h"

#include <array>
#include <tuple>

using namespace drawings;
using qx::db::Drawing;

namespace {

const std::string corners = "|10 0.0|20 0.0|11 4.0|21 0.0|12 0.0|22 3.0";

const AcDbEntity& first(const Drawing& drawing) {
    return *drawing.liveEntity(drawing.find(DrawingText::firstEntity));
}

TEST(Areas, goAroundTheirCorners) {
    const std::string below = "|210 0|220 0|230 -1", fourth = "|13 4.0|23 3.0";
    const std::tuple<std::string, const char*, const char*> cases[] = {
        {"SOLID" + corners + fourth, "0,0-4,0 4,0-4,3 4,3-0,3 0,3-0,0 ", "0..4 0..3 0..0"},
        {"TRACE" + corners + fourth, "0,0-4,0 4,0-4,3 4,3-0,3 0,3-0,0 ", "0..4 0..3 0..0"},
        {"SOLID" + corners, "0,0-4,0 4,0-0,3 0,3-0,0 ", "0..4 0..3 0..0"},
        {"SOLID|30 2.0|31 2.0|32 2.0" + corners + below, "0,0,-2--4,0,-2 -4,0,-2-0,3,-2 0,3,-2-0,0,-2 ",
         "-4..0 0..3 -2..-2"},
        {"SOLID|10 1.0|11 1.0|12 1.0|13 1.0", "1,0-1,0 ", "1..1 0..0 0..0"},
        {"3DFACE" + corners + "|13 -4.0|23 3.0|33 9.0", "0,0-4,0 4,0-0,3 0,3--4,3,9 -4,3,9-0,0 ",
         "-4..4 0..3 0..9"},
        {"3DFACE" + corners, "0,0-4,0 4,0-0,3 0,3-0,0 ", "0..4 0..3 0..0"},
        {"3DFACE|70 5" + corners + fourth, "(0,0-4,0) 4,0-0,3 (0,3-4,3) 4,3-0,0 ", "0..4 0..3 0..0"},
    };
    for (const auto& [snippet, outline, box] : cases) {
        const auto drawing = read({.entities = {snippet}});
        EXPECT_EQ(Edges{first(*drawing)}.all, outline) << snippet;
        EXPECT_EQ(extents(*drawing, DrawingText::firstEntity), box) << snippet;
    }
}

TEST(Areas, tellTheirCorners) {
    const auto drawing = read({.entities = {"SOLID|210 0|220 0|230 -1" + corners}});
    const auto& solid = static_cast<const AcDbSolid&>(first(*drawing));
    AcGePoint3d point;
    EXPECT_EQ(solid.getPointAt(3, point), Acad::eOk);
    EXPECT_EQ(shapes::pointsText(std::array{point}), "0,3 ") << "the third once more";
    EXPECT_EQ(solid.getPointAt(4, point), Acad::eInvalidIndex);
    EXPECT_TRUE(AcDbTrace::desc()->isDerivedFrom(AcDbEntity::desc()));
}

TEST(Faces, hideEdgesFromPicturesOnly) {
    const auto drawing = read({.entities = {"3DFACE|70 15" + corners}});
    const qx::draw::PictureFrame frame{{{0, 0, 0}, {4, 3, 0}}};
    qx::draw::SvgPen pen{frame};
    first(*drawing).shape(pen);
    std::string picture;
    pen.putElements(picture, "");
    EXPECT_EQ(picture, "");
    qx::shape::NearestSink nearest{{2, -1, 0}};
    first(*drawing).shape(nearest);
    EXPECT_EQ(nearest.distance(), 1);
}

TEST(EndlessLines, haveNoExtentsButArePickedCrossedAndDrawn) {
    DrawingText text{.entities = {"RAY|10 0.0|20 5.0|11 1.0|21 0.0", "XLINE|10 0.0|20 5.0|11 0.6|21 0.8",
                                  "LINE|10 1.0|20 1.0|11 9.0|21 9.0", "INSERT|2 B|10 100.0"},
                     .blocks = {{"B", {"XLINE|10 0.0|20 0.0|11 1.0", "POINT|10 7.0|20 7.0"}}}};
    const auto drawing = read(text);
    for (const Handle each : {0x100u, 0x101u}) {
        EXPECT_EQ(extents(*drawing, each), "status 1001");
        const AcDbEntity& entity = *drawing->liveEntity(drawing->find(each));
        EXPECT_TRUE(drawing->isSelectable(drawing->find(each)));
        qx::shape::WindowSink window{{-1e9, -1e9, 0}, {1e9, 1e9, 0}};
        entity.shape(window);
        EXPECT_TRUE(window.anyTouches() && !window.allInside());
        const qx::draw::PictureFrame frame{{{10, 0, 0}, {20, 40, 0}}};
        qx::draw::SvgPen pen{frame};
        entity.shape(pen);
        std::string picture;
        pen.putElements(picture, "");
        EXPECT_NE(picture.find("<path d=\"M"), picture.npos);
        EXPECT_LT(picture.size(), 60u) << picture;
    }
    EXPECT_EQ(extents(*drawing, 0x103), "107..107 7..7 0..0");
    EXPECT_EQ(shapes::text(drawing->extentsAtOpening()), "1..107 1..9 0..0");
    EXPECT_EQ(move(*drawing, 0x100, shift(1e20, 0)), Acad::eInvalidInput);
    const AcDbObjectPointer<AcDbRay> ray{idOf(*drawing, 0x100)};
    AcGePoint3d point;
    EXPECT_EQ(ray->getStartPoint(point), Acad::eOk);
    EXPECT_EQ(ray->getEndPoint(point), Acad::eNotApplicable);
}

TEST(AttributeDefinitions, showTheirTagWhereTheyStandAndTheirTextWhereItIsConstant) {
    const std::string rest = "|10 0.0|40 1.0|1 HHH|3 prompt|2 H|70 ";
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"0", "0.1..0.75 0..1 0..0", "status 1001"},
        {"2", "0.1..0.75 0..1 0..0", "0.1..2.45 0..1 0..0"},
        {"3", "0.1..0.75 0..1 0..0", "status 1001"},
        {"0|72 2|11 5.0|74 3", "4.25..4.9 -1..0 0..0", "status 1001"},
    };
    for (const auto& [flags, itself, reference] : cases) {
        const std::string definition = "ATTDEF" + rest + flags;
        const auto drawing = read({.entities = {definition, "INSERT|2 B"}, .blocks = {{"B", {definition}}}});
        EXPECT_EQ(extents(*drawing, 0x100), itself) << flags;
        EXPECT_EQ(extents(*drawing, 0x101), reference) << flags;
        EXPECT_TRUE(first(*drawing).isKindOf(AcDbText::desc()));
    }
}

} // namespace
