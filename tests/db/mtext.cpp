#include "dbmtext.h"
#include "drawings/DrawingText.h"
#include "text/measure.h"

#include <array>
#include <numbers>

using namespace drawings;
using namespace std::string_literals;
using qx::db::Drawing;

namespace {

constexpr double pi = std::numbers::pi;

std::string told(const AcGeVector3d& v) { return shapes::pointsText(std::array{AcGePoint3d::kOrigin + v}); }

/// The drawing's only entity.
class OneText {
public:
    explicit OneText(const std::string& groups, const std::string& version = "AC1015",
                     const std::string& codePage = "ANSI_936")
        : drawing_{read({.entities = {"MTEXT|" + groups}, .version = version, .codePage = codePage})} {}
    const AcDbMText* operator->() const { return static_cast<const AcDbMText*>(entity()); }
    const AcDbEntity* entity() const { return drawing_->liveEntity(drawing_->find(0x100)); }
    std::string extents() const { return drawings::extents(*drawing_, 0x100); }
    std::string corners() const {
        AcGePoint3dArray points;
        points.append({9, 9, 9});
        (*this)->getBoundingPoints(points);
        return shapes::pointsText(points);
    }

private:
    std::unique_ptr<Drawing> drawing_;
};

/// Collects the characters that are drawn.
class DrawnText final : public qx::shape::Sink {
public:
    explicit DrawnText(const AcDbEntity& entity) { entity.shape(*this); }
    void segment(const qx::shape::Segment&) override {}
    void arc(const qx::shape::EllipticArc&) override {}
    void text(const qx::shape::TextRun& run) override {
        (all += all.empty() ? "" : "|") += run.bytes;
        EXPECT_EQ(run.encoding, nullptr) << "codes must not be read again";
    }
    std::string all;
};

TEST(MText, tellsWhatTheFileSays) {
    const OneText text{"10 1.0|20 2.0|30 3.0|40 2.5|41 60.0|46 12.0|71 5|1 a|42 999.0|43 999.0"};
    EXPECT_EQ(told(text->location().asVector()), "1,2,3 ");
    EXPECT_EQ(told({text->textHeight(), text->width(), text->height()}), "2.5,60,12 ");
    EXPECT_EQ(text->attachment(), AcDbMText::kMiddleCenter);
    EXPECT_EQ(text->actualHeight(), 2.5);
    EXPECT_DOUBLE_EQ(text->actualWidth(), 2.5 * qx::text::measure(U"a").advance);
    const OneText plain{"10 1.0|40 1.0|1 a"}, beyond{"10 1.0|40 1.0|71 12|1 a"};
    EXPECT_EQ(plain->attachment(), AcDbMText::kTopLeft);
    EXPECT_EQ(beyond->attachment(), AcDbMText::kBottomRight);
}

TEST(MText, runsInItsDirection) {
    const struct {
        std::string groups;
        const char* direction;
        double degrees;
    } cases[] = {
        {"", "1,0 ", 0},
        {"|50 30.0", "0.866025,0.5 ", 30},
        {"|11 0.0|21 2.0|31 0.0", "0,1 ", 90},
        // Of both, the later one counts, unless it is a direction without length.
        {"|11 0.0|21 1.0|50 180.0", "-1,0 ", 180},
        {"|50 180.0|11 0.0|21 1.0", "0,1 ", 90},
        {"|50 90.0|11 0.0|21 0.0|31 0.0", "0,1 ", 90},
        {"|11 1e-200|21 1e-200", "0.707107,0.707107 ", 45},
        // Out of the plane, along its normal; seen from below, upright.
        {"|11 3.0|21 3.0|31 5.0", "0.707107,0.707107 ", 45},
        {"|31 5.0", "1,0 ", 0},
        {"|210 0|220 0|230 -1", "1,0 ", 180},
        {"|210 0|220 1|230 1", "1,0 ", 180},
        {"|210 1|220 0|230 0", "0,1 ", 0},
        {"|11 1.0|210 0|220 0|230 -1", "1,0 ", 180},
        {"|50 90.0|210 0|220 -1|230 0", "0,0,1 ", 90},
    };
    for (const auto& each : cases) {
        const OneText text{"10 1.0|40 1.0|1 a" + each.groups};
        EXPECT_EQ(told(text->direction()), each.direction) << each.groups;
        EXPECT_NEAR(text->rotation(), each.degrees * pi / 180, 1e-12) << each.groups;
    }
}

// Ink of H: 0.1 to 0.75 of its height, from the baseline to the top.
TEST(MText, isMeasuredWhereItStands) {
    const struct {
        const char *groups, *extents, *corners;
    } cases[] = {
        {"10 5|20 5|40 2|71 9|1 H\\PHH", "1.8..4.8 5..10.3333 0..0", "1.6,10.333333 5,10.333333 1.6,5 5,5 "},
        {"10 5|20 5|40 2|1 H|50 90.0", "5..7 5.2..6.5 0..0", "5,5 5,6.7 7,5 7,6.7 "},
        {"10 5|20 5|40 2|1 H|210 0|220 0|230 -1", "5.2..6.5 5..7 0..0", "5,5 6.7,5 5,7 6.7,7 "},
        {"10 5|20 5|30 9|40 2|1 H|210 0|220 -1|230 0", "5.2..6.5 5..5 7..9", "5,5,9 6.7,5,9 5,5,7 6.7,5,7 "},
        {"10 0|20 0|40 1|1 g", "0.1..0.6 -1.25..-0.33 0..0", "0,0 0.7,0 0,-1 0.7,-1 "},
        {"10 0|40 1|41 2|1 H H", "0.1..0.75 -2.66667..0 0..0", "0,0 0.85,0 0,-2.666667 0.85,-2.666667 "},
        {"10 0|40 1|1 H\\P\\H3;H|44 2|73 2", "0.1..2.25 -4.33333..0 0..0",
         "0,0 2.55,0 0,-4.333333 2.55,-4.333333 "},
        {"10 5|20 5|40 1|71 9|1 \\P \\~", "status 1001", "5,5 5,5 5,5 5,5 "},
        {"10 5|20 5|1 H", "status 1001", "5,5 5,5 5,5 5,5 "},
        {"10 5|20 5|40 -1|1 H", "status 1001", "5,5 5,5 5,5 5,5 "},
        {"10 5|20 5|40 1", "status 1001", "5,5 5,5 5,5 5,5 "},
        {"10 5|20 5|40 1e308|1 HHHHHHHHHH", "status 1001", nullptr},
    };
    for (const auto& each : cases) {
        const OneText text{each.groups};
        EXPECT_EQ(text.extents(), each.extents) << each.groups;
        EXPECT_TRUE(!each.corners || text.corners() == each.corners) << text.corners();
    }
}

TEST(MText, isDecodedOnce) {
    const struct {
        const char* name;
        const char* version;
        const char* groups;
        const char* drawn;
    } cases[] = {
        {"GBK, a second byte that is a backslash", "AC1015", "1 \x95\x5CP\xD6\xD0", "昞P中"},
        {"GBK, cut in the middle", "AC1015", "3 a\xD6|1 \xD0", "a中"},
        {"UTF-8, cut in the middle", "AC1032", "3 \xE4\xB8|3 \xAD|1 b", "中b"},
        {"a code cut in the middle", "AC1032", "3 a\\|1 Pb", "a|b"},
        {"escapes", "AC1015", "1 \\U+4E2D\\M+5CEC4!", "中文!"},
        {"an escape cut in the middle", "AC1015", "3 \\U+4E|1 2D", "中"},
        {"a path that looks like an escape", "AC1015", "1 C:\\\\U+4E2D", "C:\\U+4E2D"},
        {"escapes that would be codes", "AC1015", "1 \\U+005CP\\U+007Ba\\U+007D", "\\P{a}"},
        {"what is shown looks like a code", "AC1015", "1 \\\\P %{%c}", "\\P %%c"},
        {"groups of others", "AC1032", "102 {X|1 b|102 }|1 a|101 Embedded Object|1 c|1001 X|1000 d", "a"},
    };
    for (const auto& each : cases) {
        const OneText text{"10 0.0|40 1.0|"s + each.groups, each.version};
        EXPECT_EQ(DrawnText{*text.entity()}.all, each.drawn) << each.name;
    }
}

TEST(MText, hasItsStylesWidthAndSlant) {
    const std::pair<const char*, const char*> cases[] = {
        {"7 wIDE|1 H", "0.2..2.5 0..1 0..0"},
        {"7 Wide|1 \\W1;H", "0.1..1.75 0..1 0..0"},
        {"7 Wide|1 \\Q0;{\\W0.5x;H}", "0.1..0.75 0..1 0..0"},
        {"7 Unknown|1 H", "0.1..0.75 0..1 0..0"},
        {"1 H", "0.05..0.375 0..1 0..0"},
        {"7 Wrong|1 H", "0.1..0.75 0..1 0..0"},
    };
    const std::string styles =
        "B|70 0|0 ENDTAB|0 TABLE|2 STYLE|0 STYLE|2 Wide|41 2.0|50 45.0|0 STYLE|2 Wrong|41 -2.0"
        "|0 STYLE|2 Standard|41 0.5";
    for (const auto& [groups, expected] : cases) {
        const auto drawing = read({.entities = {"MTEXT|10 0.0|40 1.0|71 7|"s + groups}, .layers = {styles}});
        EXPECT_EQ(extents(*drawing, 0x100), expected) << groups;
    }
}

TEST(MText, followsItsScaleAndItsUndoing) {
    const auto drawing = read(DrawingText{.entities = {"MTEXT|10 1.0|20 2.0|40 1.0|41 2.0|1 H H"}}.bytes());
    EXPECT_EQ(extents(*drawing, 0x100), "1.1..1.75 -0.666667..2 0..0");
    step(*drawing, [&] { EXPECT_EQ(move(*drawing, 0x100, AcGeMatrix3d::scaling(3)), Acad::eOk); });
    EXPECT_EQ(extents(*drawing, 0x100), "3.3..5.25 -2..6 0..0") << "still broken at its width";
    drawing->history().undo();
    EXPECT_EQ(extents(*drawing, 0x100), "1.1..1.75 -0.666667..2 0..0");
}

} // namespace
