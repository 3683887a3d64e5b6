#include "db/RecordedShape.h"
#include "random/RandomDrawing.h"

#include <limits>

using namespace drawings;
using namespace qx::tests;
using qx::db::Drawing;

namespace {

constexpr unsigned seed = 20240611;
constexpr double tolerance = 1e-9 * 200;

std::string nameOf(const ObjectClass& type) {
    const std::string_view pattern = type.pattern;
    return std::string{pattern.substr(0, pattern.find('|'))};
}

/// What can be measured and moved by itself.
std::vector<ObjectClass> movableClasses() {
    std::vector<ObjectClass> all{objectClasses().begin(), objectClasses().end()};
    std::erase_if(all, [](const ObjectClass& each) {
        const std::string name = nameOf(each);
        return name == "DIMENSION" || name == "RAY" || name == "XLINE" || name == "VIEWPORT" ||
               name == "QXUNKNOWN";
    });
    return all;
}

/// Objects of the class, and their handles.
DrawingText drawingOf(Chance& chance, const ObjectClass& type, int count, std::vector<Handle>& handles) {
    DrawingText text;
    text.blocks = {
        {"Box",
         {"LINE|10 1.0|20 2.0|30 3.0|11 4.0|21 6.0", "ARC|10 1.0|20 1.0|40 2.0|50 30.0|51 200.0",
          "TEXT|10 1.0|20 1.0|40 1.0|1 B", "INSERT|2 C|10 3.0|20 1.0|41 2.0|50 33.0|210 0|220 1|230 1"},
         "10 1.0|20 2.0|30 0.5"},
        {"C", {"CIRCLE|10 1.0|20 0.0|40 2.0", "POINT|10 1.0"}}};
    for (int i = 0; i < count; ++i) {
        handles.push_back(DrawingText::firstEntity + text.entities.size());
        for (const std::string& each : recordsOf(chance, type, Look::plain)) text.add(each);
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
AcGeMatrix3d motion(shapes::Random& random) {
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

class EveryClass : public testing::TestWithParam<ObjectClass> {
protected:
    static constexpr int count = 100;
    const testing::ScopedTrace trace{__FILE__, __LINE__, GetParam().pattern};
    Chance random{seed};
    std::vector<Handle> handles;
    std::unique_ptr<Drawing> drawing = read(drawingOf(random, GetParam(), count, handles));

    RecordedShape shapeOf(Handle handle, double axisSign = 1) const {
        return RecordedShape{*drawing->liveEntity(drawing->find(handle)), axisSign};
    }
};
INSTANTIATE_TEST_SUITE_P(Motions, EveryClass, testing::ValuesIn(movableClasses()),
                         [](const auto& each) { return nameOf(each.param) + std::to_string(each.index); });

// Also after it was written and read again: the file says the same as the object. Undone, the bytes are back.
TEST_P(EveryClass, isDrawnWhereItWasMovedTo) {
    const std::string before = drawing->toBytes();
    std::vector<std::vector<AcGePoint3d>> expected;
    for (const Handle handle : handles) {
        const AcGeMatrix3d matrix = motion(random);
        expected.push_back(shapeOf(handle, matrix.det() < 0 ? -1 : 1).compared);
        for (AcGePoint3d& each : expected.back()) each = matrix * each;
        step(*drawing, [&] { ASSERT_EQ(move(*drawing, handle, matrix), Acad::eOk); });
    }
    EXPECT_GT(std::ranges::count_if(expected, [](const auto& each) { return !each.empty(); }), count / 2);
    const std::string moved = drawing->toBytes();
    while (!drawing->history().undo().empty()) continue;
    EXPECT_EQ(drawing->toBytes(), before);
    while (!drawing->history().redo().empty()) continue;
    EXPECT_EQ(drawing->toBytes(), moved);
    for (const char* state : {"moved", "written and read again"}) {
        for (std::size_t i = 0; i < handles.size(); ++i)
            EXPECT_LE(farthest(shapeOf(handles[i]).compared, expected[i]), tolerance)
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
        ASSERT_EQ(entity->getGeomExtents(extents) == Acad::eOk, !sampled.isEmpty()) << handle;
        if (sampled.isEmpty()) continue;
        const double largest = std::max((extents.minPoint() - AcGePoint3d{}).length(),
                                        (extents.maxPoint() - AcGePoint3d{}).length());
        const double rounding = 2e-11 * std::max(50.0, largest);
        for (const auto axis : {&AcGePoint3d::x, &AcGePoint3d::y, &AcGePoint3d::z}) {
            const double low = sampled.min.*axis - extents.minPoint().*axis;
            const double high = extents.maxPoint().*axis - sampled.max.*axis;
            EXPECT_TRUE(low >= -rounding && low <= shape.reach + rounding) << handle << " seed " << seed;
            EXPECT_TRUE(high >= -rounding && high <= shape.reach + rounding) << handle << " seed " << seed;
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
        {AcGeMatrix3d::rotation(1, AcGeVector3d::kXAxis, {0, 1e17, 0}), Acad::eInvalidInput},
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
        const auto drawing = read({.entities = entities});
        const std::string before = drawing->toBytes();
        drawing->history().begin("step");
        EXPECT_EQ(move(*drawing, DrawingText::firstEntity, shift(2e14, 0)), status) << entities[0];
        EXPECT_FALSE(drawing->history().end()) << entities[0];
        EXPECT_EQ(drawing->toBytes(), before) << entities[0];
    }
}

} // namespace
