#include "draw/DisplayList.h"
#include "draw/PictureFrame.h"
#include "drawings/DrawingText.h"
#include "shape/ExtentsSink.h"

#include <random>

namespace {

using drawings::DrawingText;
using namespace qx;

constexpr int width = 200, height = 150;

/// Notes which texts were painted.
struct Painted : draw::TextPainter {
    void paint(const shape::TextRun& run, const draw::View&, const draw::PixelRect&, draw::Colour) override {
        texts.emplace_back(run.bytes);
    }
    std::vector<std::string> texts;
};

struct Shown {
    explicit Shown(const db::Drawing& drawing) : list{drawing} { view.fit(list.extents()); }
    std::vector<draw::Colour> drawn(const draw::PixelRect& part = {0, 0, width, height}) {
        std::vector<draw::Colour> pixels(std::size_t{width} * height);
        draw::Raster raster{pixels.data(), width, height};
        raster.setClip(part);
        list.draw(raster, view, draw::Ground::light, painted);
        return pixels;
    }
    draw::DisplayList list;
    draw::View view{width, height};
    Painted painted;
};

std::size_t countOf(const std::vector<draw::Colour>& pixels, draw::Colour colour) {
    return static_cast<std::size_t>(std::ranges::count(pixels, colour));
}

constexpr draw::Colour red = 0xFF0000, blue = 0x0000FF;

DrawingText mixed() {
    DrawingText text{.entities = {},
                     .blocks = {{"B", {"CIRCLE|10 0|20 0|40 5", "LINE|10 0|20 0|11 9|21 0"}}}};
    std::mt19937 random{7};
    const auto at = [&] { return std::uniform_real_distribution{0.0, 1000.0}(random); };
    for (int i = 0; i < 400; ++i) {
        text.line({at(), at(), 0}, {at(), at(), 0});
        text.circle({at(), at(), 0}, at() / 20);
        text.add("INSERT|2 B" + drawings::point(10, {at(), at(), 0}) + drawings::tag(50, at()));
        text.add("TEXT|40 30|1 T" + std::to_string(i) + drawings::point(10, {at(), at(), 0}));
    }
    return text;
}

TEST(DisplayList, ShowsEverythingInItsColour) {
    const auto drawing =
        drawings::read({.entities = {"LINE|62 1|10 0|20 0|11 100|21 75", "LINE|8 OFF|10 -900|20 0|11 0|21 0",
                                     "CIRCLE|8 Blue|10 50|20 40|40 10", "TEXT|10 0|20 60|40 10|1 abc",
                                     "TEXT|10 0|20 10|40 1|1 tiny"},
                        .layers = {"Blue|70 0|62 5"}});
    Shown shown{*drawing};
    const auto pixels = shown.drawn();
    EXPECT_GT(countOf(pixels, red), 150U);
    EXPECT_GT(countOf(pixels, blue), 80U);
    EXPECT_EQ(shown.painted.texts,
              std::vector<std::string>{"abc"}); // the other is a line, too small to be read
    EXPECT_EQ(pixels[static_cast<std::size_t>(shown.view.toScreen({50, 50, 0}).y) * width + 100], blue);
    EXPECT_NEAR(shown.list.extents().max.x, 100, 1e-9);
}

// What is passed over must not be seen: drawn in parts, the picture is the same.
TEST(DisplayList, DrawsTheSameInParts) {
    const auto drawing = drawings::read(mixed());
    Shown shown{*drawing};
    for (int zoomed = 0; zoomed < 4; ++zoomed) {
        const auto whole = shown.drawn();
        std::vector<draw::Colour> inParts(whole.size());
        for (const draw::PixelRect part :
             {draw::PixelRect{0, 0, 67, 150}, {67, 0, 200, 31}, {67, 31, 200, 150}}) {
            const auto pixels = shown.drawn(part);
            for (std::size_t i = 0; i < pixels.size(); ++i) inParts[i] |= pixels[i];
        }
        std::size_t different = 0;
        for (std::size_t i = 0; i < whole.size(); ++i) different += (whole[i] == 0) != (inParts[i] == 0);
        // Lines that are cut off at an edge may take the next pixel there.
        EXPECT_LT(different, whole.size() / 200) << zoomed;
        shown.view.zoom(3, {80, 70});
    }
}

TEST(DisplayList, FollowsChanges) {
    DrawingText text;
    const auto line = text.line({0, 0, 0}, {100, 0, 0});
    text.circle({50, 50, 0}, 10);
    text.line({0, 75, 0}, {100, 75, 0});
    const auto drawing = drawings::read(text);
    draw::DisplayList list{*drawing};
    db::Record* record = drawing->find(line);
    const auto meets = [&](const AcGePoint3d& p) {
        return std::ranges::count(list.meeting({p, p}), record) > 0;
    };
    EXPECT_TRUE(meets({50, 0, 0}));

    drawing->setLocked(true);
    drawing->history().begin("MOVE");
    {
        AcDbObjectPointer<AcDbEntity> entity{AcDbObjectId{record}, AcDb::kForWrite};
        entity->transformBy(AcGeMatrix3d::translation({0, 30, 0}));
    }
    drawing->history().end();
    list.update(drawing->history().changedByLast(1));
    EXPECT_FALSE(meets({50, 0, 0}));
    EXPECT_TRUE(meets({50, 30, 0}));
    EXPECT_EQ(list.extents().min.y, 30);

    const auto changed = drawing->history().changedByLast(1);
    drawing->history().undo();
    list.update(changed);
    EXPECT_TRUE(meets({50, 0, 0}));

    drawing->history().begin("ERASE");
    AcDbObjectPointer<AcDbEntity> { AcDbObjectId{record}, AcDb::kForWrite } -> erase();
    drawing->history().end();
    draw::DisplayList later{*drawing};
    const auto erased = drawing->history().changedByLast(1);
    drawing->history().undo();
    later.update(erased);
    const shape::Box everywhere{{-1, -1, 0}, {200, 200, 0}};
    EXPECT_EQ(later.meeting(everywhere), list.meeting(everywhere)) << "in the order of the drawing";
}

TEST(DisplayList, DrawsTheSelectedDashed) {
    DrawingText text;
    const auto line = text.line({0, 0, 0}, {100, 0, 0});
    text.line({0, 75, 0}, {100, 75, 0});
    const auto drawing = drawings::read(text);
    Shown shown{*drawing};
    std::vector<draw::Colour> pixels(std::size_t{width} * height, 0xFFFFFF);
    draw::Raster raster{pixels.data(), width, height};
    shown.list.draw(raster, shown.view, draw::Ground::light, shown.painted);
    const std::size_t before = countOf(pixels, 0);
    std::vector<db::Record*> selected{drawing->find(line)};
    shown.list.drawAgain(selected, raster, shown.view, draw::Ground::light, draw::Emphasis::dashed);
    const double left = static_cast<double>(countOf(pixels, 0)) / static_cast<double>(before);
    EXPECT_NEAR(left, 0.8, 0.01); // one of two lines has six pixels of ten
}

TEST(DisplayList, ShowsCurvesAndEndlessLinesAndNoHiddenEdges) {
    const struct {
        const char* name;
        std::string entity;
        std::size_t least, most; ///< red pixels
    } cases[] = {
        {"construction line from edge to edge", "XLINE|62 1|10 50|20 40|11 1|21 0", 200, 200},
        {"ray to one edge", "RAY|62 1|10 50|20 40|11 1|21 0", 95, 105},
        {"line that only begins outside", "RAY|62 1|10 -5000|20 40|11 1|21 0", 200, 200},
        {"ray away from what is shown", "RAY|62 1|10 -5000|20 40|11 -1|21 0", 0, 0},
        {"spline",
         "SPLINE|62 1|70 8|71 3|72 8|73 4|40 0|40 0|40 0|40 0|40 1|40 1|40 1|40 1|10 0|20 0|10 30|20 90|10 "
         "70|20 -20|10 100|20 75",
         190, 330},
        {"face with two hidden edges", "3DFACE|62 1|10 0|20 0|11 100|21 0|12 100|22 75|13 0|23 75|70 10", 370,
         385},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        const auto drawing =
            drawings::read({.entities = {"LINE|10 0|20 0|11 0|21 75", "POINT|10 100|20 75", each.entity}});
        Shown shown{*drawing};
        const std::size_t count = countOf(shown.drawn(), red);
        EXPECT_GE(count, each.least);
        EXPECT_LE(count, each.most);
        EXPECT_NEAR(shown.list.extents().max.x, 100, 1e-9);
    }
}

TEST(DisplayList, ArcsAreTrueAtAnyScale) {
    const auto drawing = drawings::read(
        DrawingText{.entities = {"CIRCLE|62 1|10 0|20 0|40 1000", "ARC|62 5|10 0|20 0|40 1000|50 0|51 90"}}
            .bytes());
    Shown shown{*drawing};
    for (const double direction : {0.4, 2.5}) {
        const AcGePoint3d seen{1000 * std::cos(direction), 1000 * std::sin(direction), 0};
        for (double half = 1000; half > 1e-7; half /= 30) {
            shown.view.fit({seen - AcGeVector3d{half, half, 0}, seen + AcGeVector3d{half, half, 0}});
            const auto pixels = shown.drawn();
            const bool isOnArc = direction < 1; // drawn later
            EXPECT_GE(countOf(pixels, isOnArc ? blue : red), 100U) << half;
            double farthest = 0;
            for (int i = 0; i < width * height; ++i) {
                if (!pixels[static_cast<std::size_t>(i)]) continue;
                const AcGePoint3d place = shown.view.toWorld({i % width + 0.5, i / width + 0.5});
                const double off = std::abs(std::hypot(place.x, place.y) - 1000);
                farthest = std::max(farthest, off * shown.view.scale());
            }
            EXPECT_LT(farthest, 1.5) << "pixels from the curve, " << half << " units to the edge";
        }
    }
}

TEST(DisplayList, ForgetsWhatWasReplaced) {
    for (const char* entity :
         {"LINE|10 0|20 0|11 1|21 1", "XLINE|10 0|20 0|11 1|21 0", "CIRCLE|10 0|20 0|40 1"}) {
        const auto drawing = drawings::read(DrawingText{.entities = {entity, "POINT|10 9|20 9"}}.bytes());
        draw::DisplayList list{*drawing};
        std::vector<db::Record*> records;
        drawing->forEachInModelSpace([&](db::Record* record) { records.push_back(record); });
        for (int i = 0; i < 250000; ++i) list.update(std::span{records}.first(1));
        EXPECT_LT(list.strokeCount(), 110000U) << entity;
    }
}

} // namespace
