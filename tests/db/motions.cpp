#include "db/RecordedShape.h"
#include "drawings/DrawingText.h"
#include "shape/randomShapes.h"

#include <cmath>
#include <limits>
#include <numbers>

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

std::string vertices(Random& random) {
    std::string text = "|90 5" + tag(70, random.oneIn(2) ? 1 : 0) + tag(38, random.number(-5, 5));
    for (int i = 0; i < 5; ++i) {
        text += tag(10, random.number(-50, 50)) + tag(20, random.number(-50, 50));
        if (random.oneIn(2)) text += tag(42, random.number(-2, 2));
    }
    return text;
}

std::string letters(Random& random) {
    std::string text = point(10, random.point(50)) + tag(40, random.number(0.5, 5)) + "|1 Wall %%c12";
    text +=
        tag(50, random.number(-400, 400)) + tag(41, random.number(0.5, 2)) + tag(51, random.number(-30, 30));
    return text + "|71 " + std::to_string(2 * static_cast<int>(random.number(0, 4))) + "|72 " +
           std::to_string(static_cast<int>(random.number(0, 6))) + point(11, random.point(50));
}

std::string reference(Random& random) {
    const auto scale = [&] { return random.number(0.2, 3) * (random.oneIn(3) ? -1 : 1); };
    return "|2 B" + point(10, random.point(50)) + tag(41, scale()) + tag(42, scale()) + tag(43, scale()) +
           tag(50, random.number(-400, 400));
}

/// Lines that run as an angle says, or a direction, or both, or neither.
std::string multilineText(Random& random) {
    std::string text = point(10, random.point(50)) + tag(40, random.number(0.5, 5)) +
                       tag(41, random.number(-5, 30)) +
                       "|1 Wall {\\W1.5;\\Q20;\\H0.5x;and} door\\Proof\\S1/2;|71 " +
                       std::to_string(static_cast<int>(random.number(1, 10)));
    if (random.oneIn(2)) text += tag(50, random.number(-400, 400));
    if (random.oneIn(2)) text += point(11, AcGePoint3d::kOrigin + random.vector(3));
    return random.oneIn(3) ? text + tag(50, random.number(-400, 400)) : text;
}

/// Vertices of a polyline, or attributes of a reference; `groups` makes those of one.
std::vector<std::string> parts(int count, const std::function<std::string()>& groups) {
    std::vector<std::string> snippets;
    for (int i = 0; i < count; ++i) snippets.push_back(groups());
    snippets.push_back("SEQEND");
    return snippets;
}

struct ClassCase {
    const char* title;
    const char* name;
    std::function<std::string(Random&)> groups;
    std::function<std::vector<std::string>(Random&)> parts = [](Random&) {
        return std::vector<std::string>{};
    };
};
void PrintTo(const ClassCase& each, std::ostream* to) { *to << each.title; }

const ClassCase classes[] = {
    {"Line", "LINE", [](Random& r) { return point(10, r.point(50)) + point(11, r.point(50)); }},
    {"Point", "POINT", [](Random& r) { return point(10, r.point(50)) + tag(50, r.number(0, 360)); }},
    {"Circle", "CIRCLE", [](Random& r) { return point(10, r.point(50)) + tag(40, r.number(0.1, 9)); }},
    {"Arc", "ARC",
     [](Random& r) {
         return point(10, r.point(50)) + tag(40, r.number(0.1, 9)) + tag(50, r.number(-400, 400)) +
                tag(51, r.number(-400, 400));
     }},
    {"LightweightPolyline", "LWPOLYLINE", vertices},
    {"Text", "TEXT",
     [](Random& r) { return letters(r) + "|73 " + std::to_string(static_cast<int>(r.number(0, 4))); }},
    {"MultilineText", "MTEXT", multilineText},
    {"Ellipse", "ELLIPSE",
     [](Random& r) {
         return point(10, r.point(50)) + point(11, AcGePoint3d::kOrigin + r.vector(9)) +
                tag(40, r.number(0, 1.2)) + tag(41, r.number(-7, 7)) + tag(42, r.number(-7, 7));
     }},
    {"BlockReference", "INSERT", [](Random& r) { return "|66 1" + reference(r); },
     [](Random& r) {
         return parts(2, [&] { return "ATTRIB" + letters(r) + "|2 T|70 0|74 1" + extrusion(r); });
     }},
    {"FlatPolyline", "POLYLINE",
     [](Random& r) {
         return "|66 1|10 0.0|20 0.0" + tag(30, r.number(-9, 9)) + (r.oneIn(2) ? "|70 1" : "|70 4");
     },
     [](Random& r) {
         return parts(5, [&] {
             return "VERTEX" + point(10, r.point(50)) + (r.oneIn(2) ? tag(42, r.number(-2, 2)) : "") +
                    (r.oneIn(5) ? "|70 16" : "|70 0");
         });
     }},
    {"PolylineInSpace", "POLYLINE", [](Random& r) { return std::string{r.oneIn(2) ? "|70 9" : "|70 8"}; },
     [](Random& r) { return parts(5, [&] { return "VERTEX" + point(10, r.point(50)) + "|70 32"; }); }},
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
        handles.push_back(text.add(type.name + type.groups(random) + extrusion(random)));
        for (const std::string& part : type.parts(random)) text.add(part);
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
        {{"HATCH|10 0.0|20 0.0"}, Acad::eNotApplicable},
        {{"INSERT|2 B|10 0.0|70 2"}, Acad::eNotApplicable},
        {{"POLYLINE|66 1|70 0", "VERTEX|10 0.0", "VERTEX|10 9e14", "SEQEND"}, Acad::eInvalidInput},
        {{"POLYLINE|66 1|70 0", "VERTEX|10 0.0|20 x", "SEQEND"}, Acad::eNotApplicable},
        {{"INSERT|66 1|2 B", "ATTRIB|10 9e14|40 1.0|1 a", "SEQEND"}, Acad::eInvalidInput},
        {{"INSERT|66 1|2 B", "ATTRIB|10 x|40 1.0|1 a", "SEQEND"}, Acad::eNotApplicable},
        {{"INSERT|66 1|2 B|70 2", "ATTRIB|10 0.0|40 1.0|1 a", "SEQEND"}, Acad::eNotApplicable},
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
