// What a person sees: the drawing as it is at that moment, and what is selected, pointed at and asked for.
#include "accmd.h"
#include "acedads.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "desktop/DeskOnTest.h"
#include "rx/CommandStack.h"

#include <algorithm>
#include <chrono>

namespace {

using namespace qx;
using tests::DeskOnTest;

const draw::Colour red = draw::colourOn(draw::Ground::dark, 1);

const drawings::DrawingText scene{
    .entities = {"LINE|5 A1|62 1|10 0|20 0|11 100|21 0", "LINE|5 A2|62 1|10 0|20 75|11 100|21 75"}};

class Picture : public testing::Test {
protected:
    std::size_t countOf(draw::Colour colour) {
        const auto pixels = person.picture();
        return static_cast<std::size_t>(std::ranges::count(pixels, colour));
    }
    std::size_t differing(const std::vector<draw::Colour>& a, const std::vector<draw::Colour>& b) {
        std::size_t count = 0;
        for (std::size_t i = 0; i < a.size(); ++i) count += a[i] != b[i];
        return count;
    }
    TemporaryFolder folder;
    DeskOnTest person{folder, scene};
};

TEST_F(Picture, ShowsSelectedObjectsDashed) {
    const std::size_t whole = countOf(red);
    EXPECT_GT(whole, 700u);
    person.click(50, 0).then([&] { person.desk.leave(); }).work();
    const std::size_t dashed = countOf(red);
    EXPECT_LT(dashed, whole * 9 / 10);
    EXPECT_GT(dashed, whole * 7 / 10) << "one line of two, six pixels of ten";
    person.escape().work();
    EXPECT_EQ(countOf(red), whole);
    person.type("ERASE").click(50, 0).then([&] {
        person.desk.leave();
        EXPECT_EQ(countOf(red), dashed) << "also while a command asks";
    });
    person.type("").work();
    EXPECT_LT(countOf(red), whole * 6 / 10) << "gone";
    person.type("U").work();
    EXPECT_EQ(countOf(red), whole);
}

TEST_F(Picture, ShowsWhatLiesUnderTheCursor) {
    const auto before = person.picture();
    person.move(50, 30).work();
    const std::size_t crosshair = differing(before, person.picture());
    person.move(50, 0.5).work();
    EXPECT_GT(differing(before, person.picture()), crosshair + 300) << "the line is twice as wide";
    person.then([&] { person.desk.leave(); }).work();
    EXPECT_EQ(person.picture(), before);
}

void moveLineStepByStep() {
    const db::Record* record = ed::Session::current()->drawing()->find(0xA1);
    ads_point point{};
    for (int i = 0; i < 2; ++i) {
        AcDbObjectPointer<AcDbEntity> entity{AcDbObjectId{const_cast<db::Record*>(record)}, AcDb::kForWrite};
        entity->transformBy(AcGeMatrix3d::translation({0, 30, 0}));
        entity->close();
        acedGetPoint(nullptr, L"翻转: ", point);
    }
    throw 1;
}

TEST_F(Picture, FollowsACommandThatWaitsAndOneThatIsTakenBack) {
    rx::commandStack().addCommand(L"TEST", L"STEPS", nullptr, ACRX_CMD_MODAL, &moveLineStepByStep);
    const auto rowOfRed = [&] {
        const auto pixels = person.picture();
        const auto last = std::find(pixels.rbegin(), pixels.rend(), red);
        return static_cast<int>(pixels.rend() - last) / DeskOnTest::width;
    };
    const int bottom = rowOfRed();
    int rows[2] = {};
    person.type("STEPS").then([&] { rows[0] = rowOfRed(); }).click(50, 50).then([&] {
        rows[1] = rowOfRed();
    });
    person.type("").work();
    EXPECT_LT(rows[0], bottom - 80);
    EXPECT_LT(rows[1], rows[0] - 80);
    EXPECT_EQ(rowOfRed(), bottom) << "rolled back";
    rx::commandStack().removeGroup(L"TEST");
}

TEST_F(Picture, RectanglesAndRubberBandsFollowTheCursor) {
    const auto before = person.picture();
    std::size_t window = 0, crossing = 0;
    person.click(20, 20).move(60, 50).then([&] { window = differing(before, person.picture()); });
    person.escape().click(60, 20).move(20, 50).then([&] { crossing = differing(before, person.picture()); });
    person.escape().work();
    EXPECT_GT(window, 10000u) << "a tinted rectangle";
    EXPECT_GT(crossing, 10000u);
    EXPECT_NE(window, crossing);
}

void askFromCorner() {
    ads_point base{0, 75, 0}, point{};
    acedGetPoint(base, L"点: ", point);
}

TEST_F(Picture, ABasePointHasARubberBandToTheCursor) {
    rx::commandStack().addCommand(L"TEST", L"FROM", nullptr, ACRX_CMD_MODAL, &askFromCorner);
    const auto before = person.picture();
    std::size_t banded = 0, plain = 0, rectangle = 0;
    person.type("FROM").move(50, 40).then([&] { banded = differing(before, person.picture()); });
    person.escape().move(50, 40).then([&] { plain = differing(before, person.picture()); });
    person.type("ERASE").type("C").type("0,75").move(50, 40);
    person.then([&] { rectangle = differing(before, person.picture()); }).escape().work();
    EXPECT_GT(banded, plain + 80) << "dashes over half the picture";
    EXPECT_GT(rectangle, 10000u) << "also to a corner that was typed";
    rx::commandStack().removeGroup(L"TEST");
}

TEST_F(Picture, PanningByPixelsIsWhatDrawingAnewWouldShow) {
    for (const auto& [right, down] : {std::pair{37, -12}, {-400, 0}, {0, 1}, {1000, 1000}, {-640, -989}}) {
        person.then([&, r = right, d = down] { person.desk.pan(r, d); }).work();
        const auto panned = person.picture();
        person.desk.setGround(draw::Ground::dark); // draws everything anew
        EXPECT_EQ(person.picture(), panned) << right << ' ' << down;
    }
}

TEST_F(Picture, PanningEndsWhereCoordinatesEnd) {
    for (int i = 0; i < 200; ++i) person.desk.zoom(0.5, {200, 150});
    for (int i = 0; i < 5; ++i) {
        person.picture();
        person.desk.pan(300, 40);
        const auto panned = person.picture();
        person.desk.setGround(draw::Ground::dark);
        EXPECT_EQ(person.picture(), panned) << i;
    }
}

TEST_F(Picture, ZoomsByCommand) {
    const auto visible = [&] {
        const shape::Box box = person.desk.view().worldOf(0, 0, DeskOnTest::width, DeskOnTest::height);
        return box.max.x - box.min.x;
    };
    const double all = visible();
    person.type("ZOOM").type("2").work();
    EXPECT_NEAR(visible(), all / 2, 1e-9);
    person.type("ZOOM").type("W").click(40, 30).click(60, 40).work();
    EXPECT_NEAR(visible(), 20 / 0.94, 2);
    person.type("ZOOM").type("").work();
    EXPECT_NEAR(visible(), all, 1e-9);
    person.type("ZOOM").type("E").escape().work();
    EXPECT_NEAR(visible(), all, 1e-9);
}

/// The fastest of a few.
template <class Frame> double secondsOf(Frame&& frame) {
    double best = 1e9;
    for (int i = 0; i < 5; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        frame(i);
        best =
            std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
    }
    return best;
}

TEST_F(Picture, FramesOfAMovingCursorCostTheSameHoweverMuchIsSelected) {
    drawings::DrawingText text;
    for (int i = 0; i < 50000; ++i) text.line({0, i * 1.0, 0}, {75000, i * 1.0, 0});
    DeskOnTest many{folder, text};
    many.type("ERASE").type("ALL").then([&] {
        const auto shown = many.picture();
        const double still = secondsOf([&](int) {
            many.desk.pan(0, 0);
            many.picture();
        });
        const double moving = secondsOf([&](int step) {
            many.desk.moveTo({5.0 + step, 5});
            many.picture();
        });
        EXPECT_LT(moving, still / 5);
        many.desk.leave();
        EXPECT_EQ(many.picture(), shown) << "and they stay dashed";
    });
    many.escape().work();
}

TEST_F(Picture, AnySizeAndPlaceIsShown) {
    const struct {
        const char* name;
        drawings::DrawingText drawing;
        bool isSeen = true;
    } cases[] = {
        {"nothing", {}, false},
        {"one point far away", {.entities = {"POINT|10 1e12|20 -1e12"}}},
        {"one point where no view goes", {.entities = {"POINT|10 1e300|20 -1e300"}}, false},
        {"near and far", {.entities = {"CIRCLE|10 0|20 0|40 1", "CIRCLE|10 1e14|20 0|40 1e13"}}},
    };
    for (const auto& each : cases) {
        for (const auto& [width, height] : {std::pair{1, 1}, {1, 300}, {300, 0}, {400, 300}}) {
            SCOPED_TRACE(each.name + (' ' + std::to_string(width)) + " x " + std::to_string(height));
            DeskOnTest small{folder, each.drawing};
            small.then([&, w = width, h = height] { small.resize(w, h); });
            for (const double factor : {1.0, 1e-30, 1e30, 1e30}) {
                small.then([&, factor] {
                    small.desk.zoom(factor, {0.5, 0.5});
                    small.desk.pan(3, -2);
                    small.picture();
                });
                small.click(0, 0).escape().drag(-1, -1, 5, 5).type("ERASE").click(0, 0).drag(9, 9, 0, 0);
                small.then([&] { small.picture(); }).escape().escape();
            }
            small.type("ERASE").type("ALL").type("").type("UNDO").type("100").work();
            EXPECT_FALSE(small.drawing().isModified()) << small.transcript;
            small.desk.zoomExtents();
            small.desk.leave();
            const auto pixels = small.picture();
            const auto ground = draw::groundColour(draw::Ground::dark);
            const auto inked = pixels.size() - static_cast<std::size_t>(std::ranges::count(pixels, ground));
            EXPECT_EQ(inked > 0, each.isSeen);
        }
    }
}

TEST_F(Picture, FindingsAreToldWhenTheyAreMade) {
    DeskOnTest reader{folder, {.entities = {"SPLINE|5 A1|70 8|71 3|72 8|73 4|40 0", "POINT|10 1|20 1"}}};
    const auto told = [&](const std::string& sentence) { // how often
        std::size_t count = 0;
        for (std::size_t at = 0; (at = reader.transcript.find(sentence, at)) != std::string::npos; ++at)
            ++count;
        return count;
    };
    reader.type("U").work();
    EXPECT_EQ(told("发现 1 (第 "), 1u) << reader.transcript << "the spline was to be drawn";
    for (int i = 0; i < 30; ++i) reader.drawing().addFinding(nullptr, "oddity " + std::to_string(i));
    reader.type("U").type("U").work();
    EXPECT_EQ(told("发现 1 (第 "), 1u);
    EXPECT_EQ(told("发现 20: oddity 18"), 1u) << reader.transcript;
    EXPECT_EQ(told("oddity 19"), 0u);
    EXPECT_EQ(told("另有 11 条发现"), 1u);
}

TEST_F(Picture, StatusNamesTheSnap) {
    EXPECT_EQ(person.desk.status(), "");
    person.type("ZOOM").type("W").move(99.9, 0.1).then(
        [&] { EXPECT_EQ(person.desk.status(), "100.0000, 0.0000  端点"); });
    person.escape().work();
}

} // namespace
