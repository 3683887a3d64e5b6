#include "db/RecordedShape.h"
#include "drawings/DrawingText.h"
#include "shape/randomShapes.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <regex>

using namespace drawings;
using namespace std::string_literals;
using qx::db::Drawing;
using shapes::Random;

namespace {

constexpr unsigned seed = 20240611;

/// The directions that occur, and any; sometimes none is given, sometimes one that is no unit vector.
std::string extrusion(Random& random) {
    if (random.oneIn(4)) return "";
    if (random.oneIn(3)) return point(210, {0, 0, -1});
    if (random.oneIn(4)) return point(210, {0.01, -0.01, 3}); // near Z, where the frame is found otherwise
    return point(210, AcGePoint3d::kOrigin + random.vector(1));
}

/// A pattern filled in: "-5~5" is a number, "0:5" a whole one, what stands in brackets comes half of the
/// time, & is an extrusion.
std::string filled(std::string text, Random& random) {
    static const std::regex mark{R"(\[([^\]]*)\]|(-?[\d.]+)~(-?[\d.]+)|(\d+):(\d+)|&)"};
    std::ptrdiff_t from = 0;
    for (std::smatch at; std::regex_search(text.cbegin() + from, text.cend(), at, mark);) {
        std::string filling;
        if (at[1].matched)
            filling = random.oneIn(2) ? at[1].str() : "";
        else if (at[2].matched)
            filling = std::to_string(random.number(std::stod(at[2]), std::stod(at[3])));
        else if (at[4].matched)
            filling = std::to_string(static_cast<int>(random.number(std::stoi(at[4]), std::stoi(at[5]) + 1)));
        else
            filling = extrusion(random);
        from += at.position();
        text.replace(static_cast<std::size_t>(from), static_cast<std::size_t>(at.length()), filling);
    }
    return text;
}

std::string times(int count, const std::string& text) { return count ? text + times(count - 1, text) : ""; }

const std::string at10 = "|10 -50~50|20 -50~50|30 -50~50", at11 = "|11 -50~50|21 -50~50|31 -50~50";
const std::string at12 = "|12 -50~50|22 -50~50|32 -50~50";
const std::string letters = at10 + at11 +
                            "|40 0.5~5|1 Wall %%c12|50 -400~400|41 0.5~2|51 -30~30|72 0:5"
                            "[|71 2][|71 4][|71 6]";
const std::string scales = "|41 0.2~3|42 0.2~3|43 0.2~3[|41 -3~-0.2][|42 -3~-0.2][|43 -3~-0.2]";

const std::string flat10 = "|10 -50~50|20 -50~50", flat11 = "|11 -50~50|21 -50~50",
                  knots = "|40 0|40 0|40 0|40 0|40 0.5~1|40 1~2|40 3|40 3|40 3|40 3";
const std::string edges =
    "|92 1|93 4|72 1" + flat10 + flat11 + "|72 2" + flat10 + "|40 0.5~9|50 -90~400|51 -90~400|73 0:1|72 3" +
    flat10 + "|11 -9~9|21 -9~9|40 0.1~1|50 0~360|51 0~360|73 0:1|72 4|94 3|73 0|74 0|95 10|96 6" + knots +
    times(6, flat10 + "|42 0.5~2") + "|97 0|97 0";

struct ClassCase {
    const char* title;
    std::string pattern; ///< entities separated by "; "
};
void PrintTo(const ClassCase& each, std::ostream* to) { *to << each.title; }

const ClassCase classes[] = {
    {"Line", "LINE" + at10 + at11 + "&"},
    {"Point", "POINT" + at10 + "|50 0~360&"},
    {"Circle", "CIRCLE" + at10 + "|40 0.1~9&"},
    {"Arc", "ARC" + at10 + "|40 0.1~9|50 -400~400|51 -400~400&"},
    {"LightweightPolyline",
     "LWPOLYLINE|90 5|70 0:1|38 -5~5" + times(5, "|10 -50~50|20 -50~50[|42 -2~2]") + "&"},
    {"Text", "TEXT" + letters + "|73 0:3&"},
    {"Solid", "SOLID" + at10 + at11 + at12 + "[|13 -50~50|23 -50~50|33 -50~50]&"},
    {"Trace", "TRACE" + at10 + at11 + at12 + "|13 -50~50|39 -2~2&"},
    {"Face", "3DFACE" + at10 + at11 + at12 + "[|13 -50~50]|70 0:15"},
    {"AttributeDefinition", "ATTDEF" + letters + "|2 TAG|70 0:3|74 0:3&"},
    {"MultilineText", "MTEXT" + at10 +
                          "|40 0.5~5|41 -5~30|1 Wall {\\W1.5;\\Q20;\\H0.5x;and} door\\Proof\\S1/2;"
                          "|71 1:9[|50 -400~400][|11 -3~3|21 -3~3|31 -3~3][|50 -400~400]&"},
    {"Ellipse", "ELLIPSE" + at10 + "|11 -9~9|21 -9~9|31 -9~9|40 0~1.2|41 -7~7|42 -7~7&"},
    {"BlockReference", "INSERT|66 1|2 B" + at10 + scales + "|50 -400~400&" +
                           times(2, "; ATTRIB" + letters + "|2 T|70 0|74 1&") + "; SEQEND"},
    {"RowsAndColumns", "INSERT|66 1|2 B" + at10 + scales +
                           "|50 -400~400|70 2:3|71 1:3|44 -9~9|45 -9~9&; ATTRIB" + letters +
                           "|2 T|70 0|74 1&; SEQEND"},
    {"PolygonMesh",
     "POLYLINE|66 1|70 16[|70 49]|71 2|72 3" + times(6, "; VERTEX" + at10 + "|70 64") + "; SEQEND"},
    {"PolyFaceMesh", "POLYLINE|66 1|70 64|71 4|72 2" + times(4, "; VERTEX" + at10 + "|70 192") +
                         "; VERTEX|10 0|70 128|71 1|72 -2|73 3[|74 4]; VERTEX|70 128|71 4|72 1; SEQEND"},
    {"FlatPolyline", "POLYLINE|66 1|10 0.0|20 0.0|30 -9~9|70 1[|70 4]&; VERTEX" + at10 +
                         times(4, "; VERTEX" + at10 + "[|42 -2~2][|70 16]") + "; SEQEND"},
    {"Spline", "SPLINE|70 0|71 3" + knots + times(6, at10) + "[" + times(6, "|41 0.5~2") + "]&"},
    {"SplineThroughPoints",
     "SPLINE|70 0:1|71 3[|12 -3~3|22 -3~3|32 -3~3][|13 1~3|23 1~3|33 1~3]" + times(5, at11) + "&"},
    {"Leader", "LEADER|71 1|72 0:1|76 4" + times(4, at10) +
                   "&|211 1|221 0|231 0|212 -3~3|222 -3~3|232 0|213 1~2|223 0|233 0"},
    {"Hatch", "HATCH|10 0|20 0|30 -9~9&|2 X|91 2|92 3|72 1|73 1|93 4" + times(4, flat10 + "[|42 -2~2]") +
                  "|97 0" + edges +
                  "|75 0|76 1|52 20|41 2|78 1|53 20|43 1|44 2|45 3|46 4|79 1|49 1|98 1|10 1|20 1"},
    {"PolylineInSpace", "POLYLINE|66 1|70 8[|70 9]&" + times(5, "; VERTEX" + at10 + "|70 32") + "; SEQEND"},
};

/// The drawing, and the handles of the entities of the class.
DrawingText drawingOf(Random& random, const ClassCase& type, int count, std::vector<Handle>& handles) {
    DrawingText text;
    text.blocks = {
        {"B",
         {"LINE|10 1.0|20 2.0|30 3.0|11 4.0|21 6.0", "ARC|10 1.0|20 1.0|40 2.0|50 30.0|51 200.0",
          "TEXT|10 1.0|20 1.0|40 1.0|1 B", "INSERT|2 C|10 3.0|20 1.0|41 2.0|50 33.0|210 0|220 1|230 1"},
         "10 1.0|20 2.0|30 0.5"},
        {"C", {"CIRCLE|10 1.0|20 0.0|40 2.0", "POINT|10 1.0"}}};
    for (int i = 0; i < count; ++i) {
        std::string rest = filled(type.pattern, random);
        handles.push_back(DrawingText::firstEntity + text.entities.size());
        for (std::size_t end = 0; end != rest.npos; rest.erase(0, end + 2))
            text.add(rest.substr(0, end = rest.find("; ")));
    }
    return text;
}

AcGeMatrix3d mirroring(const AcGeVector3d& across) {
    const AcGeVector3d n = across.normal();
    const auto image = [&](const AcGeVector3d& v) { return v - n * (2 * n.dotProduct(v)); };
    return AcGeMatrix3d{}.setCoordSystem({}, image(AcGeVector3d::kXAxis), image(AcGeVector3d::kYAxis),
                                         image(AcGeVector3d::kZAxis));
}

/// Any similarity; plain ones often.
AcGeMatrix3d motion(Random& random) {
    AcGeMatrix3d matrix = AcGeMatrix3d::translation(random.vector(100));
    if (random.oneIn(5)) return matrix;
    const AcGeVector3d axis = random.oneIn(3) ? AcGeVector3d::kZAxis : random.vector(1);
    matrix *= AcGeMatrix3d::rotation(random.number(-7, 7), axis, random.point(30));
    if (random.oneIn(2))
        matrix *= mirroring(random.oneIn(2)   ? AcGeVector3d::kXAxis
                            : random.oneIn(2) ? AcGeVector3d::kZAxis
                                              : random.vector(1));
    if (random.oneIn(2)) matrix *= AcGeMatrix3d::scaling(random.number(0.1, 4), random.point(30));
    return matrix;
}

double farthest(const std::vector<AcGePoint3d>& actual, const std::vector<AcGePoint3d>& expected) {
    if (actual.size() != expected.size()) return std::numeric_limits<double>::infinity();
    double most = 0;
    for (std::size_t i = 0; i < actual.size(); ++i) most = std::max(most, actual[i].distanceTo(expected[i]));
    return most;
}

class EveryClass : public testing::TestWithParam<ClassCase> {
protected:
    static constexpr int count = 100;
    Random random{seed};
    std::vector<Handle> handles;
    std::unique_ptr<Drawing> drawing = read(drawingOf(random, GetParam(), count, handles).bytes());

    RecordedShape shapeOf(Handle handle, double axisSign = 1) const {
        return RecordedShape{*drawing->liveEntity(drawing->find(handle)), axisSign};
    }
};
INSTANTIATE_TEST_SUITE_P(Motions, EveryClass, testing::ValuesIn(classes),
                         [](const auto& each) { return each.param.title; });

// Also after it was written and read again: the file says the same as the object. Undone, the bytes are back.
TEST_P(EveryClass, isDrawnWhereItWasMovedTo) {
    const std::string before = drawing->toBytes();
    std::vector<std::vector<AcGePoint3d>> expected;
    for (const Handle handle : handles) {
        const AcGeMatrix3d matrix = motion(random);
        expected.push_back(shapeOf(handle, matrix.det() < 0 ? -1 : 1).compared);
        for (AcGePoint3d& each : expected.back()) each = matrix * each;
        ASSERT_FALSE(expected.back().empty());
        step(*drawing, [&] { ASSERT_EQ(move(*drawing, handle, matrix), Acad::eOk); });
    }
    const std::string moved = drawing->toBytes();
    while (!drawing->history().undo().empty()) continue;
    EXPECT_EQ(drawing->toBytes(), before);
    while (!drawing->history().redo().empty()) continue;
    EXPECT_EQ(drawing->toBytes(), moved);
    for (const char* state : {"moved", "written and read again"}) {
        for (std::size_t i = 0; i < handles.size(); ++i)
            EXPECT_LE(farthest(shapeOf(handles[i]).compared, expected[i]), 1e-9 * 200)
                << state << ", entity " << i << ", seed " << seed;
        drawing = read(drawing->toBytes());
    }
}

TEST_P(EveryClass, hasTheBoxOfItsPoints) {
    for (const Handle handle : handles) {
        AcDbObjectPointer<AcDbEntity> entity{idOf(*drawing, handle)};
        const RecordedShape shape{*entity};
        qx::shape::Box sampled;
        for (const AcGePoint3d& each : shape.points) sampled.add(each);
        AcDbExtents extents;
        ASSERT_EQ(entity->getGeomExtents(extents), Acad::eOk);
        for (const auto axis : {&AcGePoint3d::x, &AcGePoint3d::y, &AcGePoint3d::z}) {
            const double low = sampled.min.*axis - extents.minPoint().*axis;
            const double high = extents.maxPoint().*axis - sampled.max.*axis;
            EXPECT_TRUE(low >= -1e-9 && low <= shape.reach + 1e-9) << handle << " seed " << seed;
            EXPECT_TRUE(high >= -1e-9 && high <= shape.reach + 1e-9) << handle << " seed " << seed;
        }
    }
}

TEST_P(EveryClass, refusesWhatIsNoMotionOrLeadsTooFar) {
    const double nan = std::numeric_limits<double>::quiet_NaN(),
                 infinity = std::numeric_limits<double>::infinity();
    const auto axes = [](const AcGeVector3d& x, const AcGeVector3d& y, const AcGeVector3d& z) {
        return AcGeMatrix3d{}.setCoordSystem(AcGePoint3d::kOrigin, x, y, z);
    };
    const std::pair<AcGeMatrix3d, Acad::ErrorStatus> refused[] = {
        {shift(1e16, 0), Acad::eInvalidInput},
        {shift(0, -1e20), Acad::eInvalidInput},
        {shift(nan, 0), Acad::eInvalidInput},
        {shift(0, infinity), Acad::eInvalidInput},
        {AcGeMatrix3d::rotation(1, AcGeVector3d::kZAxis, {1e17, 0, 0}), Acad::eInvalidInput},
        {axes({nan, 0, 0}, {0, 1, 0}, {0, 0, 1}), Acad::eCannotScaleNonUniformly},
        {axes({1, 0, 0}, {0, 3, 0}, {0, 0, 1}), Acad::eCannotScaleNonUniformly},
        {axes({1, 0, 0}, {0.1, 1, 0}, {0, 0, 1}), Acad::eCannotScaleNonUniformly},
        {axes({1, 0, 0}, {0, 1, 0}, {0, 0, 0}), Acad::eCannotScaleNonUniformly},
    };
    const std::string before = drawing->toBytes();
    drawing->history().begin("step");
    for (const auto& each : refused)
        EXPECT_EQ(move(*drawing, DrawingText::firstEntity, each.first), each.second) << &each - refused;
    EXPECT_FALSE(drawing->history().end());
    EXPECT_EQ(drawing->toBytes(), before);
}

// What no motion would carry away must not leave by its extended data or its parts either.
TEST(Motions, areAllOrNothing) {
    const std::pair<std::vector<std::string>, Acad::ErrorStatus> cases[] = {
        {{"POINT|10 0.0|20 0.0|1001 X|1011 9e14|1021 0.0|1031 0.0"}, Acad::eInvalidInput},
        {{"LINE|10 0.0|20 0.0|11 9e14|21 0.0"}, Acad::eInvalidInput},
        {{"LWPOLYLINE|90 2|10 0.0|20 0.0|10 9e14|20 0.0"}, Acad::eInvalidInput},
        {{"TEXT|10 0.0|20 0.0|40 1.0|1 a|72 1|11 9e14|21 0.0"}, Acad::eInvalidInput},
        {{"WIPEOUT|10 0.0|20 0.0"}, Acad::eNotApplicable},
        {{"INSERT|2 B|10 9e14|70 2"}, Acad::eInvalidInput},
        {{"POLYLINE|66 1|70 0", "VERTEX|10 0.0", "VERTEX|10 9e14", "SEQEND"}, Acad::eInvalidInput},
        {{"POLYLINE|66 1|70 0", "VERTEX|10 0.0|20 x", "SEQEND"}, Acad::eNotApplicable},
        {{"INSERT|66 1|2 B", "ATTRIB|10 9e14|40 1.0|1 a", "SEQEND"}, Acad::eInvalidInput},
        {{"INSERT|66 1|2 B", "ATTRIB|10 x|40 1.0|1 a", "SEQEND"}, Acad::eNotApplicable},
        {{"INSERT|66 1|2 B|70 2", "ATTRIB|10 9e14|40 1.0|1 a", "SEQEND"}, Acad::eInvalidInput},
    };
    for (const auto& [entities, status] : cases) {
        const auto drawing = read(DrawingText{.entities = entities}.bytes());
        const std::string before = drawing->toBytes();
        drawing->history().begin("step");
        EXPECT_EQ(move(*drawing, DrawingText::firstEntity, shift(2e14, 0)), status) << entities[0];
        EXPECT_FALSE(drawing->history().end()) << entities[0];
        EXPECT_EQ(drawing->toBytes(), before) << entities[0];
    }
}

} // namespace
