#include "kernel/classTests.h"
#include "dbents.h"

#include <gtest/gtest.h>

namespace qx::tests {
namespace {
using namespace kernel;

/// One letter per class test that the entity passes.
std::string passed(AcDbEntity* entity) {
    const std::pair<const AcDbEntity*, char> tests[] = {
        {asLine(entity), 'L'},          {asPolyline(entity), 'P'}, {asPolyline2d(entity), '2'},
        {asPolyline3d(entity), '3'},    {asArc(entity), 'A'},      {asCircle(entity), 'C'},
        {asEllipse(entity), 'E'},       {asText(entity), 'T'},     {asMText(entity), 'M'},
        {asBlockReference(entity), 'B'}};
    std::string letters;
    for (const auto& [typed, letter] : tests)
        if (typed) letters += letter;
    return letters;
}

struct DerivedCircle : AcDbCircle {
    AcRxClass* isA() const override {
        static AcRxClass descriptor{L"DerivedCircle", AcDbCircle::desc()};
        return &descriptor;
    }
};

TEST(ClassTests, EachClassPassesItsOwnTestOnly) {
    const struct {
        const char* name;
        std::unique_ptr<AcDbEntity> entity;
        const char* passes;
    } cases[] = {
        {"null", nullptr, ""},
        {"line", std::make_unique<AcDbLine>(), "L"},
        {"lightweight polyline", std::make_unique<AcDbPolyline>(), "P"},
        {"2d polyline", std::make_unique<AcDb2dPolyline>(), "2"},
        {"3d polyline", std::make_unique<AcDb3dPolyline>(), "3"},
        {"arc is no circle", std::make_unique<AcDbArc>(), "A"},
        {"circle", std::make_unique<AcDbCircle>(), "C"},
        {"class derived from circle", std::make_unique<DerivedCircle>(), "C"},
        {"ellipse", std::make_unique<AcDbEllipse>(), "E"},
        {"text", std::make_unique<AcDbText>(), "T"},
        {"attribute counts as text", std::make_unique<AcDbAttribute>(), "T"},
        {"multiline text", std::make_unique<AcDbMText>(), "M"},
        {"block reference", std::make_unique<AcDbBlockReference>(), "B"},
        {"point passes none", std::make_unique<AcDbPoint>(), ""},
    };
    for (const auto& each : cases) EXPECT_EQ(passed(each.entity.get()), each.passes) << each.name;
}

} // namespace
} // namespace qx::tests
