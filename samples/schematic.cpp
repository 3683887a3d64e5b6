// The pipes of a cooling water station, in millimetres on an A2 sheet: a round tank, a pump house that stands
// askew, two heat exchangers, the pipes between them, and a sheet with legend and title. Labels, arrows,
// pumps and a drain are out of place on purpose: they are what the sample scripts put right. Those scripts
// name objects by handle, so each kind starts at a fixed one:
//   480 tank, 481 supply main, 482 return main, 483 inner face of the south wall
//   500 labels of the supply main     520 labels around the tank    540 arrows of the return main
//   560 label of the bend, 561 gauge at the return main
//   580 pumps: a pump takes ten handles, from its base plate on     600 drain
#include "drawings.h"

#include "Pen.h"

#include <array>

namespace samples {
namespace {

constexpr Point sheetMin{0, 0}, sheetMax{594, 420};

Frame schematicFrame() {
    return {Version::r2018,
            Unit::millimetre,
            sheetMin,
            sheetMax,
            {{"中心线", 1, "CENTER", LayerState::locked},
             {"设备", 7, "Continuous", LayerState::shown, 35},
             {"供水管", 5, "Continuous", LayerState::shown, 50},
             {"回水管", 1, "Continuous", LayerState::shown, 50},
             {"辅助管", 6},
             {"排水", 3, "DASHED"},
             {"建筑", 8},
             {"仪表", 4},
             {"标注", 7},
             {"图框", 7},
             {"保温", 8, "DASHED", LayerState::frozen}},
            "设备",
            "汉字",
            "GENAPP",
            1,
            3.5};
}

/// Coordinates of something that stands askew.
struct Axes {
    Point origin;
    double angle; ///< of the first axis
    Point at(double along, double across) const { return origin + turned({along, across}, angle); }
    Axes movedTo(double along, double across, double turn = 0) const {
        return {at(along, across), angle + turn};
    }
};

Handle box(Pen& pen, const Axes& axes, Point from, Point to) {
    return pen.polyline(
        {axes.at(from.x, from.y), axes.at(to.x, from.y), axes.at(to.x, to.y), axes.at(from.x, to.y)},
        Closed::yes);
}

// ---- symbols

const std::vector<AttributeSlot> deviceSlots{{"位号", "设备位号", {0, 2.2}, 3},
                                             {"名称", "设备名称", {0, -2.2}, 2.5}};
const std::vector<AttributeSlot> gaugeSlots{{"代号", "被测变量", {0, 13.8}, 2.5},
                                            {"编号", "回路编号", {0, 10.2}, 2.5}};
const std::vector<AttributeSlot> exchangerSlots{{"位号", "设备位号", {0, 13}, 3.5}};

void defineSymbols(Drawing& drawing) {
    drawing.block("截止阀", [](Pen& pen) {
        pen.polyline({{-4, -2.2}, {4, 2.2}, {4, -2.2}, {-4, 2.2}}, Closed::yes);
        pen.line({0, 0}, {0, 3.5});
        pen.line({-1.8, 3.5}, {1.8, 3.5});
    });
    drawing.block("止回阀", [](Pen& pen) { // opens to the right
        pen.polyline({{-4, -2.2}, {4, 2.2}, {4, -2.2}, {-4, 2.2}}, Closed::yes);
        pen.circle({-4, 2.2}, 0.7);
    });
    drawing.block("流向", [](Pen& pen) { // to the right
        pen.polyline({{4, 0}, {-4, 2}, {-2.5, 0}, {-4, -2}}, Closed::yes);
    });
    drawing.block(
        "设备标签",
        [](Pen& pen) {
            pen.rectangle({-11, -4.5}, 22, 9);
            pen.line({-11, 0}, {11, 0});
            pen.definitions(deviceSlots);
        },
        true);
    drawing.block(
        "就地仪表",
        [](Pen& pen) { // its tap is at 0,0
            pen.line({0, 0}, {0, 6.5});
            pen.circle({0, 12}, 5.5);
            pen.line({-5.5, 12}, {5.5, 12});
            pen.definitions(gaugeSlots);
        },
        true);
    drawing.block(
        "换热器",
        [](Pen& pen) {
            pen.rectangle({-26, -9}, 52, 18);
            pen.polyline({{-26, -5}, {-14, -5}, {-8, 5}, {0, -5}, {8, 5}, {14, -5}, {26, -5}}, Closed::no);
            pen.definitions(exchangerSlots);
        },
        true);
}

// ---- where things are

constexpr double tankRadius = 48, supplyAngle = -20, returnAngle = 15;
constexpr double houseLength = 200, houseWidth = 110, wall = 5, suctionAt = 62, dischargeAt = 88;
constexpr std::array<double, 3> pumpsAt{35, 95, 155};
const Axes house{{265, 58}, 25};
const Point bend = house.at(95, houseWidth + 25);
const Point tank = polar(bend, supplyAngle, -200);
const Point tankOutlet = polar(tank, supplyAngle, tankRadius);
const Point tankInlet = polar(tank, returnAngle, tankRadius);
const Point returnCorner{427.5,
                         tankInlet.y + (427.5 - tankInlet.x) * std::tan(returnAngle * 0.0174532925199433)};

// A crossing pipe jumps over with a small arc.
constexpr double jump = 2.5;
void alongHouse(Pen& pen, double across, std::vector<double> stops) {
    for (std::size_t i = 0; i + 1 < stops.size(); ++i) {
        const double from = stops[i] + (i > 0 ? jump : 0),
                     to = stops[i + 1] - (i + 2 < stops.size() ? jump : 0);
        pen.line(house.at(from, across), house.at(to, across));
        if (i > 0) pen.arc(house.at(stops[i], across), jump, house.angle, house.angle + 180);
    }
}

// ---- what the scripts refer to

void drawReferences(Pen& pen) {
    pen.series(0x480);
    pen.layer("设备");
    pen.circle(tank, tankRadius);
    pen.layer("供水管");
    // The bend turns by 45 degrees to the right.
    constexpr double tangent = 12.4264068711929, bulge = -0.198912367379658;
    pen.polyline({{tankOutlet},
                  {polar(bend, supplyAngle, -tangent), bulge},
                  {polar(bend, supplyAngle - 45, tangent)},
                  {house.at(95, suctionAt)}},
                 Closed::no, 0.8);
    pen.layer("回水管");
    pen.line(returnCorner, tankInlet);
    pen.layer("建筑");
    pen.line(house.at(wall, wall), house.at(houseLength - wall, wall));
}

// ---- the tank

struct Nozzle {
    double angle;
    const char* label;
    Point labelAt; ///< as it was put down in a hurry
};

void drawTank(Pen& pen) {
    pen.layer("中心线");
    for (const double angle : {0.0, 90.0, 180.0, 270.0})
        pen.line(polar(tank, angle, tankRadius - 6), polar(tank, angle, tankRadius + 2));
    pen.layer("设备");
    pen.circle(tank, tankRadius - 2.5);
    pen.ellipse(tank + Point{-20, 24}, {7, 3}, 0.6);
    pen.ellipse(tank + Point{-20, 24}, {5.6, 2.4}, 0.6);
    pen.text(tank + Point{0, 5}, 6, "循环水箱", Justify::middleCentre);
    pen.text(tank + Point{0, -5}, 4, "T-101  V=120m³", Justify::middleCentre);
    pen.text(tank + Point{-20, 15.5}, 2.5, "人孔", Justify::middleCentre);
    for (const double angle : {returnAngle, supplyAngle, 120.0, 165.0, 255.0}) {
        const Axes nozzle{polar(tank, angle, tankRadius), angle};
        box(pen, nozzle, {0, -2}, {5, 2});
        box(pen, nozzle, {5, -3.2}, {6.2, 3.2});
    }
}

void drawTankLabels(Pen& pen) {
    pen.series(0x520);
    pen.layer("标注");
    pen.text({136, 338}, 3.5, "N1 回水口 DN250");
    pen.text({84, 345}, 3.5, "N3 补水口 DN80");
    pen.text({132, 226}, 3.5, "N2 出水口 DN300");
    pen.text({38, 236}, 3.5, "N5 加药口 DN25");
    pen.text({39, 268}, 3.5, "N4 溢流口");
}

// ---- the two mains

void drawSupplyLabels(Pen& pen) {
    pen.series(0x500);
    pen.layer("标注");
    pen.text({166, 250}, 4, "CWS-101");
    pen.text({200, 236}, 4, "循环供水");
    pen.text({238, 222}, 4, "DN300");
    pen.multilineText({258, 218}, 4, 30, "i=0.003");
}

void drawReturnLabels(Pen& pen) {
    pen.series(0x540);
    pen.layer("回水管");
    pen.insert("流向", {372, 366});
    pen.insert("流向", {300, 348});
    pen.insert("流向", {220, 326});
    pen.layer("标注");
    pen.text(polar(polar(tankInlet, returnAngle, 120), returnAngle + 90, 2), 4, "CWR-102 循环回水 DN250",
             Justify::centre, returnAngle);
    pen.series(0x560);
    pen.text({306, 222}, 3, "弯头 R=1.5D");
    pen.layer("仪表");
    pen.insertWith("就地仪表", {178, 326}, gaugeSlots, {"TI", "102"});
}

void drawOtherPipes(Pen& pen) {
    pen.layer("辅助管");
    const Point makeUp = polar(tank, 120, tankRadius + 6.2);
    const Point corner{makeUp.x - (392 - makeUp.y) / std::tan(1.0471975511966), 392};
    pen.polyline2d({{makeUp}, {corner}, {36, 392}}, Closed::no);
    pen.insert("截止阀", polar(makeUp, 120, 18), {1, 1, 120});
    pen.insert("截止阀", {48, 392});
    const Point overflow = polar(tank, 165, tankRadius + 6.2);
    // Turns by 105 degrees to the left, then hangs over a funnel.
    pen.polyline2d({{overflow},
                    {40, overflow.y + (overflow.x - 40) * 0.267949192431123, 0.493145},
                    {34, 300},
                    {34, 216}},
                   Closed::no);
    pen.polyline({{30, 218}, {34, 212}, {38, 218}}, Closed::no);
    const Point dosing = polar(tank, 255, tankRadius + 6.2), below = polar(dosing, 255, 20);
    pen.polyline2d({{dosing}, {below, 0.0654}, {below.x - 2, below.y - 14}, {below.x - 2, 170}}, Closed::no);
    pen.insert("止回阀", {below.x - 2, 190}, {1, 1, 90});
    pen.layer("设备");
    pen.rectangle({below.x - 24, 136}, 44, 34);
    pen.circle({below.x - 13, 156}, 8);
    pen.circle({below.x + 9, 156}, 8);
    pen.insertWith("设备标签", {below.x - 2, 142}, deviceSlots, {"X-101", "加药装置"});
}

// ---- the pump house

void drawHouse(Pen& pen) {
    pen.layer("建筑");
    box(pen, house, {0, 0}, {houseLength, houseWidth});
    const double east = houseLength - wall, north = houseWidth - wall;
    pen.line(house.at(east, wall), house.at(east, north));
    pen.line(house.at(east, north), house.at(wall, north));
    pen.line(house.at(wall, north), house.at(wall, wall));
    // A door in the west wall.
    pen.line(house.at(0, 30), house.at(-18, 30));
    pen.arc(house.at(0, 30), 18, house.angle + 90, house.angle + 180);
    pen.text(house.at(40, 97), 5, "循环水泵房", Justify::middleCentre, house.angle);
    pen.layer("排水");
    box(pen, house, {178, 44}, {192, 58});
    pen.layer("标注");
    pen.text(house.at(185, 51), 2.5, "集水坑", Justify::middleCentre, house.angle);
}

void drawHeaders(Pen& pen) {
    pen.layer("供水管");
    std::vector<double> suction{15}, discharge{12};
    for (const double at : pumpsAt) suction.push_back(at - 15);
    suction.push_back(165);
    alongHouse(pen, suctionAt, suction);
    discharge.push_back(95);
    discharge.push_back(houseLength + 30);
    alongHouse(pen, dischargeAt, discharge);
    for (const double at : pumpsAt) {
        pen.line(house.at(at - 9, suctionAt), house.at(at - 9, 29));
        pen.insert("截止阀", house.at(at - 9, 46), {1, 1, house.angle + 270});
        pen.line(house.at(at - 15, 23), house.at(at - 15, dischargeAt));
        pen.insert("止回阀", house.at(at - 15, 75), {1, 1, house.angle + 90});
    }
}

// The base is the middle of the edge that goes to the wall.
void drawPump(Drawing& drawing, const char* name, const Axes& base) {
    Pen& pen = drawing.pen();
    GroupScope scope(pen, drawing.group(name, "水泵、电机、底座和标签"));
    pen.layer("设备");
    box(pen, base, {-18, 0}, {18, 16});
    pen.circle(base.at(-9, 8), 6);
    pen.line(base.at(-9, 8), base.at(1, 8));
    box(pen, base, {1, 3}, {15, 13});
    pen.insertWith("设备标签", base.at(8, 23), deviceSlots, {name, "循环泵"}, base.angle);
}

void drawPumps(Drawing& drawing) {
    constexpr double clear = wall + 10;
    Pen& pen = drawing.pen();
    pen.series(0x580);
    drawPump(drawing, "P-101A", house.movedTo(pumpsAt[0], clear));
    pen.series(0x590);
    drawPump(drawing, "P-101B", house.movedTo(pumpsAt[1], clear + 9, -19));
    pen.series(0x5A0);
    drawPump(drawing, "P-101C", house.movedTo(pumpsAt[2], clear + 5, 16));
}

void drawDrain(Pen& pen) {
    pen.series(0x600);
    pen.layer("排水");
    const Axes start = house.movedTo(8, 17, -4);
    pen.polyline({{start.at(0, 0)}, {start.at(177, 0)}, {start.at(177, 34)}}, Closed::no);
}

// ---- the consumers

void drawExchangers(Pen& pen) {
    const Point left{478, 0}, right{572, 0};
    const Point discharge = house.at(houseLength + 30, dischargeAt);
    const double corner = discharge.y + (left.x - discharge.x) * std::tan(house.angle * 0.0174532925199433);
    pen.layer("供水管");
    pen.polyline({{discharge}, {left.x, corner}, {left.x, 335}, {505, 335}}, Closed::no);
    pen.line({left.x, 285}, {505, 285});
    pen.layer("回水管");
    pen.polyline({{557, 285}, {right.x, 285}, {right.x, returnCorner.y}, returnCorner}, Closed::no);
    pen.line({557, 335}, {right.x, 335});
    pen.insert("截止阀", {right.x - 60, returnCorner.y});
    pen.layer("设备");
    for (const auto& [y, tag] : {std::pair{290.0, "E-101 换热器"}, {340.0, "E-102 换热器"}}) {
        pen.insertWith("换热器", {531, y}, exchangerSlots, {tag});
        pen.insert("截止阀", {491, y - 5});
    }
    pen.layer("辅助管");
    pen.polyline3d({{{545, 349}, 3000}, {{545, 358}, 5200}, {{560, 364}, 5200}, {{578, 364}, 6000}});
}

// ---- the sheet

void drawLegend(Pen& pen) {
    struct Row {
        const char* block;
        const char* name;
    };
    constexpr Row rows[] = {{"截止阀", "截止阀"}, {"止回阀", "止回阀"}, {"流向", "介质流向"}};
    constexpr double left = 500, width = 78, pitch = 12, top = 200;
    pen.text({left + width / 2, top + 4}, 5, "图例", Justify::centre);
    double y = top;
    for (const auto& row : rows) {
        pen.rectangle({left, y - pitch}, width, pitch);
        pen.insert(row.block, {left + 14, y - pitch / 2});
        pen.text({left + 32, y - pitch / 2}, 4, row.name, Justify::middleLeft);
        y -= pitch;
    }
    pen.line({left + 27, top}, {left + 27, y});
    pen.multilineText({left, y - 8}, 3.5, width,
                      "说明：\\P1. 本图为工艺系统示意，不按比例。\\P2. 管径以毫米计。\\P"
                      "3. 水泵两用一备。\\P4. 管道坡向泵房。");
}

void drawSheet(Pen& pen) {
    pen.layer("图框");
    pen.rectangle(sheetMin, sheetMax.x, sheetMax.y);
    pen.polyline({{25, 10}, {584, 10}, {584, 410}, {25, 410}}, Closed::yes, 1);
    drawLegend(pen);
    constexpr double left = 464, right = 584, top = 66;
    const char* rows[] = {"项目名称  循环水站改造", "图名  循环水系统管路图", "图号  工艺-07", "比例  示意"};
    double y = top;
    for (const char* row : rows) {
        pen.line({left, y}, {right, y});
        pen.text({left + 5, y - 7}, 5, row, Justify::middleLeft);
        y -= 14;
    }
    pen.line({left, 10}, {left, top});
    pen.text({150, 30}, 9, "循环水系统管路图", Justify::centre);
    pen.polyline({{100, 26}, {200, 26}}, Closed::no, 0.8);
}

} // namespace

std::string schematic() {
    Drawing drawing(schematicFrame(), LineEnd::crlf, Encoding::utf8);
    defineSymbols(drawing);
    Pen& pen = drawing.pen();
    drawReferences(pen);
    drawSupplyLabels(pen);
    drawTankLabels(pen);
    drawReturnLabels(pen);
    drawPumps(drawing);
    drawDrain(pen);
    pen.series(0x680);
    drawTank(pen);
    drawOtherPipes(pen);
    drawHouse(pen);
    drawHeaders(pen);
    drawExchangers(pen);
    drawSheet(pen);
    return drawing.bytes();
}

} // namespace samples
