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

// Also after it was written and read again: the file says the same as the object.
TEST_P(EveryClass, isDrawnWhereItWasMovedTo) {
    std::vector<std::vector<AcGePoint3d>> expected;
    for (const Handle handle : handles) {
        const AcGeMatrix3d matrix = motion(random);
        expected.push_back(shapeOf(handle, matrix.det() < 0 ? -1 : 1).compared);
        for (AcGePoint3d& each : expected.back()) each = matrix * each;
        ASSERT_FALSE(expected.back().empty());
        ASSERT_EQ(move(*drawing, handle, matrix), Acad::eOk);
    }
    for (const char* state : {"moved", "written and read again"}) {
        for (std::size_t i = 0; i < handles.size(); ++i)
            EXPECT_LE(farthest(shapeOf(handles[i]).compared, expected[i]), 1e-9 * 200)
                << state << ", entity " << i << ", seed " << seed;
        drawing = read(drawing->toBytes());
    }
}

TEST_P(EveryClass, comesBackWhereItWas) {
    const std::string before = drawing->toBytes();
    for (const Handle handle : handles) {
        const AcGeMatrix3d matrix = motion(random);
        const auto expected = shapeOf(handle).compared;
        step(*drawing, [&] { ASSERT_EQ(move(*drawing, handle, matrix), Acad::eOk); });
        step(*drawing, [&] { ASSERT_EQ(move(*drawing, handle, matrix.inverse()), Acad::eOk); });
        EXPECT_LE(farthest(shapeOf(handle).compared, expected), 1e-9 * 50) << handle << ", seed " << seed;
    }
    while (!drawing->history().undo().empty()) {
    }
    EXPECT_EQ(drawing->toBytes(), before) << "after undo, seed " << seed;
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
            EXPECT_NEAR(sampled.min.*axis, extents.minPoint().*axis, shape.reach + 1e-9)
                << handle << " seed " << seed;
            EXPECT_NEAR(sampled.max.*axis, extents.maxPoint().*axis, shape.reach + 1e-9)
                << handle << " seed " << seed;
            EXPECT_LE(extents.minPoint().*axis, sampled.min.*axis + 1e-9) << handle << " seed " << seed;
            EXPECT_GE(extents.maxPoint().*axis, sampled.max.*axis - 1e-9) << handle << " seed " << seed;
        }
    }
}

TEST_P(EveryClass, refusesWhatIsNoMotionOrLeadsTooFar) {
    const double nan = std::numeric_limits<double>::quiet_NaN(),
                 infinity = std::numeric_limits<double>::infinity();
    const auto axes = [](const AcGeVector3d& x, const AcGeVector3d& y, const AcGeVector3d& z) {
        return AcGeMatrix3d{}.setCoordSystem(AcGePoint3d::kOrigin, x, y, z);
    };
    const struct {
        const char* name;
        AcGeMatrix3d matrix;
        Acad::ErrorStatus status;
    } refused[] = {
        {"beyond the largest coordinate", shift(1e16, 0), Acad::eInvalidInput},
        {"the box of nothing", shift(0, -1e20), Acad::eInvalidInput},
        {"no number in the shift", shift(nan, 0), Acad::eInvalidInput},
        {"infinite shift", shift(0, infinity), Acad::eInvalidInput},
        {"a turn about a far centre", AcGeMatrix3d::rotation(1, AcGeVector3d::kZAxis, {1e17, 0, 0}),
         Acad::eInvalidInput},
        {"no number in the axes", axes({nan, 0, 0}, {0, 1, 0}, {0, 0, 1}), Acad::eCannotScaleNonUniformly},
        {"stretched", axes({1, 0, 0}, {0, 3, 0}, {0, 0, 1}), Acad::eCannotScaleNonUniformly},
        {"sheared", axes({1, 0, 0}, {0.1, 1, 0}, {0, 0, 1}), Acad::eCannotScaleNonUniformly},
        {"flattened", axes({1, 0, 0}, {0, 1, 0}, {0, 0, 0}), Acad::eCannotScaleNonUniformly},
    };
    const std::string before = drawing->toBytes();
    for (const auto& each : refused) {
        const bool isChanged = step(*drawing, [&] {
            EXPECT_EQ(move(*drawing, DrawingText::firstEntity, each.matrix), each.status) << each.name;
        });
        EXPECT_FALSE(isChanged) << each.name << " left an undo step";
    }
    EXPECT_EQ(drawing->toBytes(), before);
}

// A text that no motion would carry away must not leave by its extended data or its attributes either.
TEST(Motions, areAllOrNothing) {
    const DrawingText text{.entities = {"POINT|10 0.0|20 0.0|1001 X|1011 1e15|1021 0.0|1031 0.0",
                                        "LINE|10 0.0|20 0.0|11 -9e14|21 0.0",
                                        "LWPOLYLINE|90 2|10 0.0|20 0.0|10 9e14|20 0.0",
                                        "TEXT|10 0.0|20 0.0|40 1.0|1 a|72 1|11 9e14|21 0.0",
                                        "MTEXT|10 0.0|20 0.0|1 a", "INSERT|2 B|10 0.0|70 2"}};
    const auto drawing = read(text.bytes());
    EXPECT_EQ(move(*drawing, 0x100, shift(1, 0)), Acad::eInvalidInput);
    EXPECT_EQ(move(*drawing, 0x101, shift(-2e14, 0)), Acad::eInvalidInput);
    EXPECT_EQ(move(*drawing, 0x102, shift(2e14, 0)), Acad::eInvalidInput);
    EXPECT_EQ(move(*drawing, 0x103, shift(2e14, 0)), Acad::eInvalidInput);
    EXPECT_EQ(move(*drawing, 0x104, shift(1, 0)), Acad::eNotApplicable);
    EXPECT_EQ(move(*drawing, 0x105, shift(1, 0)), Acad::eNotApplicable);
    EXPECT_EQ(drawing->toBytes(), text.bytes());
}

} // namespace
