#include "drawings/DrawingText.h"
#include "ed/objectSnap.h"

#include <gtest/gtest.h>

namespace {

using drawings::DrawingText;
using namespace qx;
using ed::SnapKind;

/// "endpoint 3,4", or "-".
std::string snapped(const DrawingText& text, const AcGePoint3d& cursor, double reach = 2) {
    static constexpr const char* names[] = {"endpoint",     "midpoint",  "centre", "quadrant",
                                            "intersection", "insertion", "nearest"};
    const auto drawing = drawings::read(text);
    std::vector<db::Record*> all;
    drawing->forEachInModelSpace([&](db::Record* each) { all.push_back(each); });
    const auto snap = ed::snapAt(*drawing, all, cursor, reach);
    if (!snap) return "-";
    char place[80];
    std::snprintf(place, sizeof place, " %.6g,%.6g,%.6g", snap->point.x, snap->point.y, snap->point.z);
    return names[static_cast<int>(snap->kind)] + std::string{place};
}

TEST(ObjectSnap, FindsThePointThatIsMeant) {
    const struct {
        const char* name;
        std::vector<std::string> entities;
        AcGePoint3d cursor;
        const char* snap;
    } cases[] = {
        {"the nearer end", {"LINE|10 0|20 0|30 7|11 100|21 0|31 9"}, {99, 1, 0}, "endpoint 100,0,9"},
        {"the middle", {"LINE|10 0|20 0|11 100|21 0"}, {51, -1, 0}, "midpoint 50,0,0"},
        {"somewhere on it", {"LINE|10 0|20 0|11 100|21 0"}, {30, 1.5, 0}, "nearest 30,0,0"},
        {"out of reach", {"LINE|10 0|20 0|11 100|21 0"}, {30, 2.5, 0}, "-"},
        {"two lines crossing",
         {"LINE|10 0|20 0|11 100|21 60", "LINE|10 0|20 60|11 100|21 0"},
         {51, 31, 0},
         "midpoint 50,30,0"},
        {"crossing off the middle",
         {"LINE|10 0|20 0|11 100|21 0", "LINE|10 20|20 -10|11 20|21 50"},
         {21, 1, 0},
         "intersection 20,0,0"},
        {"passing over each other",
         {"LINE|10 0|20 0|11 100|21 0", "LINE|10 20|20 -10|30 5|11 20|21 50|31 5"},
         {21, 1, 0},
         "nearest 21,0,0"},
        {"line and circle",
         {"LINE|10 0|20 6|11 100|21 6", "CIRCLE|10 50|20 0|40 10"},
         {59, 5, 0},
         "intersection 58,6,0"},
        {"centre under the cursor", {"CIRCLE|10 50|20 0|40 10"}, {51, 1, 0}, "centre 50,0,0"},
        {"centre by the line of the circle", {"CIRCLE|10 50|20 0|40 10"}, {57, 8, 0}, "centre 50,0,0"},
        {"quadrant", {"CIRCLE|10 50|20 0|40 10"}, {51, 11, 0}, "quadrant 50,10,0"},
        {"quadrant from below",
         {"CIRCLE|10 50|20 0|40 10|210 0|220 0|230 -1"},
         {-61, 0.5, 0},
         "quadrant -60,0,0"},
        {"no quadrant beyond the arc's ends", {"ARC|10 0|20 0|40 10|50 20|51 160"}, {10.5, 0.5, 0}, "-"},
        {"end of an arc", {"ARC|10 0|20 0|40 10|50 0|51 180"}, {9, 1, 0}, "endpoint 10,0,0"},
        {"end of an ellipse's axis",
         {"ELLIPSE|10 0|20 0|11 30|21 40|40 0.5|41 0|42 6.283185307179586"},
         {31, 39, 0},
         "quadrant 30,40,0"},
        {"a bulge's middle",
         {"LWPOLYLINE|90 2|70 0|10 0|20 0|42 1|10 20|20 0"},
         {10, -11, 0},
         "midpoint 10,-10,0"},
        {"text", {"TEXT|10 5|20 5|40 10|1 abc"}, {4, 4, 0}, "insertion 5,5,0"},
        {"inside of a block", {"INSERT|2 B|10 100|20 0|50 90"}, {101, 9, 0}, "endpoint 100,10,0"},
        {"where a block stands", {"INSERT|2 B|10 100|20 0|50 90"}, {101, -1, 0}, "endpoint 100,0,0"},
        {"hidden", {"LINE|8 OFF|10 0|20 0|11 100|21 0"}, {0, 0, 0}, "-"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(
            snapped({.entities = c.entities, .blocks = {{"B", {"LINE|10 0|20 0|11 10|21 0"}}}}, c.cursor),
            c.snap)
            << c.name;
}

TEST(ObjectSnap, IsNotLostInACrowd) {
    DrawingText text;
    for (int i = 0; i < 3000; ++i) text.line({-1.0 * i, -50, 0}, {1.0 * i, 50, 0});
    EXPECT_EQ(snapped(text, {0.1, 0.1, 0}), "midpoint 0,0,0");
}

} // namespace
