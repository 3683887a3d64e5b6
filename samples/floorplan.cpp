// The ground floor of a small office house, in millimetres: axes, columns, walls, windows, doors, room tags
// with attributes, furniture as nested blocks in named groups, and a sheet with door schedule and title. Some
// rows are out of line on purpose: they are what the sample scripts put right. Those scripts name objects by
// handle, so each kind starts at a fixed one:
//   500 doors to the corridor, north side       580 room tags: south row, then north row (a tag takes five
//   handles) 600 axis bubbles below the plan (three handles each) 700 workplaces of 102, 780 of the open
//   office 107: per workplace desk, chair, screen
#include "drawings.h"

#include "Pen.h"

#include <array>

namespace samples {
namespace {

constexpr Point sheetMin{-9500, -8000}, sheetMax{53500, 21700};
constexpr double bay = 7200, width = 36000, axisB = 6600, axisC = 9000, depth = 15600;
constexpr double outer = 240, inner = 200; // wall thicknesses

Frame floorFrame() {
    return {Version::r2010,
            Unit::millimetre,
            sheetMin,
            sheetMax,
            {{"轴线", 1, "CENTER", LayerState::locked},
             {"轴号", 3},
             {"墙体", 255, "Continuous", LayerState::shown, 50},
             {"柱", 9},
             {"门窗", 4},
             {"家具", 33},
             {"洁具", 6},
             {"楼梯", 2},
             {"房间", 7},
             {"尺寸", 3},
             {"图框", 7},
             {"天花", 8, "DASHED", LayerState::frozen}},
            "墙体",
            "汉字"};
}

const std::vector<AttributeSlot> roomSlots{{"编号", "房间编号", {0, 340}, 300},
                                           {"名称", "房间名称", {0, -110}, 350},
                                           {"面积", "房间面积", {0, -510}, 220}};
const std::vector<AttributeSlot> axisSlots{{"轴号", "轴线编号", {0, 0}, 400}};

void defineOpenings(Drawing& drawing) {
    drawing.block("单开门", [](Pen& pen) { // hinge at 0,0; the leaf stands open
        pen.layer("门窗");
        pen.rectangle({0, 0}, 45, 900);
        pen.arc({0, 0}, 900, 0, 90);
    });
    drawing.block("双开门", [](Pen& pen) { // middle at 0,0
        pen.layer("门窗");
        pen.rectangle({-900, 0}, 45, 900);
        pen.rectangle({855, 0}, 45, 900);
        pen.arc({-900, 0}, 900, 0, 90);
        pen.arc({900, 0}, 900, 90, 180);
    });
    drawing.block("窗", [](Pen& pen) { // one metre wide, middle at 0,0; stretched by its scale
        pen.layer("门窗");
        pen.rectangle({-500, -outer / 2}, 1000, outer);
        pen.line({-500, -40}, {500, -40});
        pen.line({-500, 40}, {500, 40});
    });
    drawing.block("柱", [](Pen& pen) {
        pen.layer("柱");
        pen.polyline({{-250, 0}, {250, 0}}, Closed::no, 500);
        pen.rectangle({-250, -250}, 500, 500);
    });
}

void defineFurniture(Drawing& drawing) {
    drawing.block("椅子", [](Pen& pen) { // faces up
        pen.polyline({{-220, -200, 0.2}, {220, -200}, {220, 200}, {-220, 200}}, Closed::yes);
        pen.polyline({{-250, -120, 0.45}, {250, -120}}, Closed::no);
    });
    drawing.block("书桌", [](Pen& pen) {
        pen.rectangle({-700, -350}, 1400, 700);
        pen.rectangle({260, -310}, 400, 560);
    });
    drawing.block("显示器", [](Pen& pen) {
        pen.polyline({{-270, 0, 0.1}, {270, 0}, {270, 60}, {-270, 60}}, Closed::yes);
        pen.rectangle({-60, 60}, 120, 90);
    });
    drawing.block("会议桌", [](Pen& pen) { // with its ten chairs, which are blocks themselves
        pen.polyline({{-1800, -600}, {1800, -600, 0.4}, {1800, 600}, {-1800, 600, 0.4}}, Closed::yes);
        for (const double x : {-1350.0, -450.0, 450.0, 1350.0}) {
            pen.insert("椅子", {x, -900});
            pen.insert("椅子", {x, 900}, {1, 1, 180});
        }
        pen.insert("椅子", {-2400, 0}, {1, 1, 270});
        pen.insert("椅子", {2400, 0}, {1, 1, 90});
    });
    drawing.block("圆桌", [](Pen& pen) {
        pen.circle({0, 0}, 450);
        for (int i = 0; i < 4; ++i)
            pen.insert("椅子", polar({0, 0}, i * 90 + 45, 750), {1, 1, i * 90 + 135.0});
    });
    drawing.block("沙发", [](Pen& pen) { // back at the top
        pen.rectangle({-1000, -400}, 2000, 800);
        pen.rectangle({-850, -400}, 850, 600);
        pen.rectangle({0, -400}, 850, 600);
    });
    drawing.block("书架", [](Pen& pen) {
        pen.rectangle({0, 0}, 900, 350);
        pen.line({0, 0}, {900, 350});
    });
    drawing.block("坐便器", [](Pen& pen) { // tank at the top
        pen.rectangle({-220, -180}, 440, 180);
        pen.polyline({{-180, -180}, {-180, -450, 1}, {180, -450}, {180, -180}}, Closed::no);
        pen.circle({0, -420}, 60);
    });
    drawing.block("洗手盆", [](Pen& pen) {
        pen.polyline({{-240, 0}, {-240, -200, 0.5}, {240, -200}, {240, 0}}, Closed::yes);
        pen.circle({0, -160}, 35);
    });
}

void defineTags(Drawing& drawing) {
    const auto roomTag = [](Pen& pen) {
        pen.layer("房间");
        pen.rectangle({-1150, -700}, 2300, 1300);
        pen.line({-1150, 120}, {1150, 120});
        pen.definitions(roomSlots);
    };
    drawing.block("房间标签", roomTag, true);
    const auto bubble = [](Pen& pen) {
        pen.layer("轴号");
        pen.circle({0, 0}, 400);
        pen.definitions(axisSlots);
    };
    drawing.block("轴号", bubble, true);
}

constexpr std::array<double, 4> axesY{0, axisB, axisC, depth};

void drawAxes(Pen& pen) {
    pen.layer("轴线");
    for (int i = 0; i <= 5; ++i) pen.line({i * bay, -3400}, {i * bay, depth + 3400});
    for (const double y : axesY) pen.line({-3400, y}, {width + 3400, y});
    pen.layer("柱");
    for (int i = 0; i <= 5; ++i)
        for (const double y : axesY) pen.insert("柱", {i * bay, y});
}

struct Gap {
    double from, to;
};

// Pieces of wall between the openings, each a closed outline.
void wallAlongX(Pen& pen, double y, double thickness, Gap whole, const std::vector<Gap>& gaps) {
    double at = whole.from;
    const auto piece = [&](double to) {
        if (to > at) pen.rectangle({at, y - thickness / 2}, to - at, thickness);
    };
    for (const auto& gap : gaps) {
        piece(gap.from);
        at = gap.to;
    }
    piece(whole.to);
}

void wallAlongY(Pen& pen, double x, double thickness, Gap whole) {
    pen.rectangle({x - thickness / 2, whole.from}, thickness, whole.to - whole.from);
}

constexpr double face = 250; // walls end at the columns' faces

// One window in the middle of each bay, but for the entrance in the third one of the south.
void drawOuterWalls(Pen& pen) {
    for (int i = 0; i < 5; ++i) {
        const double left = i * bay, middle = left + bay / 2;
        const double half = i == 2 ? 900 : 1500;
        wallAlongX(pen, 0, outer, {left + face, left + bay - face}, {{middle - half, middle + half}});
        wallAlongX(pen, depth, outer, {left + face, left + bay - face}, {{middle - 1500, middle + 1500}});
    }
    for (const double x : {0.0, width}) {
        wallAlongY(pen, x, outer, {face, axisB - face});
        wallAlongY(pen, x, outer, {axisC + face, depth - face});
    }
    wallAlongY(pen, 0, outer, {axisB + face, axisC - face});
    wallAlongY(pen, width, outer, {axisB + face, axisB + 300});
    wallAlongY(pen, width, outer, {axisC - 300, axisC - face});
}

// Hinges of the corridor doors, as they should be; each opening is 900 wide to the right of its hinge.
constexpr std::array<double, 4> northHinges{5400, 12600, 19800, 23000};
constexpr std::array<double, 4> southHinges{5400, 8000, 27000, 29300};

void drawInnerWalls(Pen& pen) {
    const auto along = [&](double y, double hinge, int i) {
        wallAlongX(pen, y, inner, {i * bay + face, (i + 1) * bay - face}, {{hinge, hinge + 900}});
    };
    for (std::size_t i = 0; i < northHinges.size(); ++i) along(axisC, northHinges[i], static_cast<int>(i));
    wallAlongX(pen, axisC, inner, {4 * bay + face, width - face}, {{31500, 33300}});
    along(axisB, southHinges[0], 0);
    along(axisB, southHinges[1], 1);
    along(axisB, southHinges[2], 3);
    wallAlongX(pen, axisB, inner, {4 * bay + face, width - face}, {{29300, 30200}, {33000, 33900}});
    for (const int axis : {1, 2, 3, 4}) wallAlongY(pen, axis * bay, inner, {face, axisB - face});
    for (const int axis : {2, 3, 4}) wallAlongY(pen, axis * bay, inner, {axisC + face, depth - face});
    wallAlongY(pen, 32700, inner, {outer / 2, axisB - inner / 2});
}

void drawWindows(Pen& pen) {
    pen.layer("门窗");
    for (int i = 0; i < 5; ++i) {
        const double middle = (i + 0.5) * bay;
        if (i != 2) pen.insert("窗", {middle, 0}, {3, 1});
        pen.insert("窗", {middle, depth}, {3, 1});
    }
    pen.insert("窗", {width, (axisB + axisC) / 2}, {1.8, 1, 90});
}

// The corridor doors of the north side were set by eye: none stands exactly on the wall's face.
void drawDoors(Pen& pen) {
    pen.series(0x500);
    constexpr std::array<double, 4> slips{-60, 140, 45, -130};
    for (std::size_t i = 0; i < northHinges.size(); ++i)
        pen.insert("单开门", {northHinges[i], axisC + inner / 2 + slips[i]});
    pen.insert("双开门", {32400, axisC + inner / 2 + 90});
    pen.insert("双开门", {2.5 * bay, outer / 2});
    // The south doors are mirrored copies, as old drawings have them.
    pen.mirrored(true);
    for (const double hinge : southHinges) pen.insert("单开门", {hinge + 900, axisB - inner / 2}, {1, -1});
    pen.insert("单开门", {33900, axisB - inner / 2}, {1, -1});
    pen.mirrored(false);
}

struct Room {
    const char* number;
    const char* name;
    const char* area;
    Point tag;
};

void drawRoomTags(Pen& pen) {
    pen.series(0x580);
    pen.layer("房间");
    const Room rooms[] = {
        {"101", "会议室", "47.5㎡", {3120, 4960}},       {"102", "办公室", "47.5㎡", {11490, 5130}},
        {"103", "门厅", "47.5㎡", {17640, 4580}},        {"104", "办公室", "47.5㎡", {24690, 4870}},
        {"105", "卫生间", "25.1㎡", {31250, 4490}},      {"106", "茶水间", "21.0㎡", {34250, 4690}},
        {"107", "开敞办公区", "94.6㎡", {10290, 10690}}, {"108", "经理室", "47.5㎡", {17420, 10250}},
        {"109", "资料室", "47.5㎡", {26050, 10430}},     {"110", "楼梯间", "47.5㎡", {30260, 10080}},
    };
    for (const auto& room : rooms)
        pen.insertWith("房间标签", room.tag, roomSlots, {room.number, room.name, room.area});
}

// Below, the bubbles hang at different heights; on the other sides they touch their axes.
void drawAxisBubbles(Pen& pen) {
    pen.series(0x600);
    pen.layer("轴号");
    constexpr std::array<double, 6> slips{-80, 150, -210, 60, 240, -140};
    const auto bubble = [&](Point at, const std::string& name) {
        pen.insertWith("轴号", at, axisSlots, {name});
    };
    for (std::size_t i = 0; i < slips.size(); ++i)
        bubble({static_cast<double>(i) * bay, -3800 + slips[i]}, std::to_string(i + 1));
    for (std::size_t i = 0; i < slips.size(); ++i)
        bubble({static_cast<double>(i) * bay, depth + 3800}, std::to_string(i + 1));
    const char* letters[] = {"A", "B", "C", "D"};
    for (std::size_t i = 0; i < axesY.size(); ++i) {
        bubble({-3800, axesY[i]}, letters[i]);
        bubble({width + 3800, axesY[i]}, letters[i]);
    }
}

// A desk with its chair below and a screen on it: one group, so that the three travel together.
void drawWorkplace(Drawing& drawing, const std::string& name, Point at) {
    GroupScope scope(drawing.pen(), drawing.group(name, "书桌、椅子和显示器"));
    drawing.pen().insert("书桌", at);
    drawing.pen().insert("椅子", at + Point{-120, -560});
    drawing.pen().insert("显示器", at + Point{-120, 130});
}

void drawWorkplaces(Drawing& drawing) {
    Pen& pen = drawing.pen();
    pen.layer("家具");
    pen.series(0x700);
    const Point in102[] = {{8350, 3480}, {9990, 3140}, {11630, 3690}, {13270, 3300}};
    for (std::size_t i = 0; i < std::size(in102); ++i)
        drawWorkplace(drawing, "工位-102-" + std::to_string(i + 1), in102[i]);
    pen.series(0x780);
    constexpr std::array<double, 6> rowOne{1200, 3060, 5900, 7600, 10900, 13200};
    constexpr std::array<double, 6> rowTwo{1200, 4330, 5960, 8750, 10420, 13200};
    for (std::size_t i = 0; i < rowOne.size(); ++i)
        drawWorkplace(drawing, "工位-107-A" + std::to_string(i + 1), {rowOne[i], 14450});
    for (std::size_t i = 0; i < rowTwo.size(); ++i)
        drawWorkplace(drawing, "工位-107-B" + std::to_string(i + 1), {rowTwo[i], 12450});
}

void drawFurniture(Drawing& drawing) {
    Pen& pen = drawing.pen();
    pen.series(0x900);
    pen.insert("会议桌", {3600, 2400});
    pen.insert("圆桌", {15700, 3000});
    pen.insert("沙发", {20700, 3000}, {1, 1, 270});
    drawWorkplace(drawing, "工位-104-1", {23600, 2900});
    drawWorkplace(drawing, "工位-104-2", {26600, 2900});
    drawWorkplace(drawing, "经理台", {18000, 13500});
    pen.insert("沙发", {15300, 12300}, {1, 1, 90});
    for (int i = 0; i < 6; ++i) pen.insert("书架", {22600 + i * 1000.0, 14300});
    for (int i = 0; i < 6; ++i) pen.insert("书架", {22600 + i * 1000.0, 12900});
    pen.insert("圆桌", {34300, 2400});
}

void drawWashroom(Drawing& drawing) {
    Pen& pen = drawing.pen();
    pen.layer("洁具");
    {
        GroupScope scope(pen, drawing.group("洗手台-105", "台面和三个洗手盆"));
        pen.rectangle({29000, 5200 - 2300}, 550, 2100);
        for (int i = 0; i < 3; ++i) pen.insert("洗手盆", {29000, 3300 + i * 650.0}, {1, 1, 90});
    }
    GroupScope scope(pen, drawing.group("隔间-105", "三个厕位"));
    for (int i = 0; i < 3; ++i) {
        const double left = 29300 + i * 1100.0;
        pen.rectangle({left, 200}, 1000, 1400);
        pen.mirrored(true);
        pen.insert("坐便器", {left + 500, 300}, {1, -1});
        pen.circle({left + 850, 1350}, 80); // paper basket
        const Point hinge{left + 200, 1600};
        pen.line(hinge, hinge + Point{0, 600});
        pen.arc(hinge, 600, 0, 90);
        pen.mirrored(false);
    }
}

void drawStairs(Pen& pen) {
    pen.layer("楼梯");
    constexpr double left = 29100, right = 35700, first = 11700, tread = 300;
    for (int i = 0; i < 10; ++i)
        for (const auto [from, to] : {Gap{left, 32250}, Gap{32550, right}})
            pen.line({from, first + i * tread}, {to, first + i * tread});
    pen.rectangle({32250, first - 100}, 300, 9 * tread + 200);
    pen.polyline({{30700, first - 300},
                  {30700, first + 9 * tread + 500},
                  {34100, first + 9 * tread + 500},
                  {34100, first + 900}},
                 Closed::no);
    pen.polyline({{34040, first + 900}, {34160, first + 900}, {34100, first + 500}}, Closed::yes);
    pen.text({30700, first - 700}, 300, "上", Justify::centre);
}

// A chain of dimensions along x or y, as lines, ticks and numbers.
void drawChain(Pen& pen, Point from, const std::vector<double>& lengths, bool vertical) {
    const double turn = vertical ? 90 : 0;
    Point at = from;
    const auto tick = [&](Point p) {
        pen.line(polar(p, turn + 45, 150), polar(p, turn + 225, 150));
        pen.line(polar(p, turn + 90, 250), polar(p, turn - 90, 250));
    };
    tick(at);
    for (const double length : lengths) {
        const Point to = polar(at, turn, length);
        pen.line(at, to);
        pen.text(polar(polar(at, turn, length / 2), turn + 90, 90), 300,
                 std::to_string(static_cast<int>(length)), Justify::centre, turn);
        tick(to);
        at = to;
    }
}

void drawDimensions(Pen& pen) {
    pen.layer("尺寸");
    const std::vector<double> bays(5, bay), storeys{axisB, axisC - axisB, depth - axisC};
    drawChain(pen, {0, -1700}, bays, false);
    drawChain(pen, {0, -2500}, {width}, false);
    drawChain(pen, {0, depth + 1700}, bays, false);
    drawChain(pen, {-1700, 0}, storeys, true);
    drawChain(pen, {-2500, 0}, {depth}, true);
    drawChain(pen, {width + 1700, 0}, storeys, true);
}

struct ScheduleRow {
    const char* cells[4];
};

void drawSchedule(Pen& pen) {
    constexpr ScheduleRow rows[] = {{{"类型", "编号", "洞口尺寸", "数量"}},
                                    {{"门", "M0921", "900x2100", "9"}},
                                    {{"门", "M1821", "1800x2100", "2"}},
                                    {{"窗", "C3018", "3000x1800", "9"}},
                                    {{"窗", "C1818", "1800x1800", "1"}}};
    constexpr double columns[] = {45000, 46500, 48500, 51500, 52800}, top = 18800, pitch = 800;
    pen.text({48900, 19400}, 500, "门窗表", Justify::centre);
    double y = top;
    for (const auto& row : rows) {
        pen.line({columns[0], y}, {columns[4], y});
        for (std::size_t i = 0; i < 4; ++i)
            pen.text({(columns[i] + columns[i + 1]) / 2, y - pitch / 2}, 300, row.cells[i],
                     Justify::middleCentre);
        y -= pitch;
    }
    pen.line({columns[0], y}, {columns[4], y});
    for (const double x : columns) pen.line({x, top}, {x, y});
}

void drawSheet(Pen& pen) {
    pen.layer("图框");
    pen.rectangle(sheetMin, sheetMax.x - sheetMin.x, sheetMax.y - sheetMin.y);
    pen.polyline({{-7000, -7500}, {53000, -7500}, {53000, 21200}, {-7000, 21200}}, Closed::yes, 100);
    pen.line({44800, -7500}, {44800, 21200});
    drawSchedule(pen);
    pen.multilineText({45200, 13600}, 320, 7400,
                      "说明：\\P1. 尺寸单位为毫米，标高单位为米。\\P2. 外墙厚240，内墙厚200，轴线居中。\\P"
                      "3. 柱截面500x500。\\P4. 家具仅为示意。");
    const char* rows[] = {
        "项目名称  综合办公楼", "图名  一层平面图", "图号  建施-03", "比例  1:100", "设计", "校对", "审核"};
    double y = 600;
    for (const char* row : rows) {
        pen.line({44800, y}, {53000, y});
        pen.text({45200, y - 750}, 350, row);
        y -= 1150;
    }
    pen.line({47200, -4000}, {47200, -7500});
    pen.text({18000, -6200}, 900, "一层平面图  1:100", Justify::centre);
    pen.polyline({{13800, -6500}, {22200, -6500}}, Closed::no, 80);
    pen.line({13800, -6680}, {22200, -6680});
}

} // namespace

std::string floorplan() {
    Drawing drawing(floorFrame(), LineEnd::lf, Encoding::utf8);
    defineOpenings(drawing);
    defineFurniture(drawing);
    defineTags(drawing);
    Pen& pen = drawing.pen();
    pen.series(0x300);
    drawAxes(pen);
    pen.layer("墙体");
    drawOuterWalls(pen);
    drawInnerWalls(pen);
    drawWindows(pen);
    drawDoors(pen);
    drawRoomTags(pen);
    drawAxisBubbles(pen);
    drawWorkplaces(drawing);
    drawFurniture(drawing);
    drawWashroom(drawing);
    drawStairs(pen);
    drawDimensions(pen);
    drawSheet(pen);
    return drawing.bytes();
}

} // namespace samples
