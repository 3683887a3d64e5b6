// A site plan in metres: two streets, a ring road, eight buildings, trees, parking, and a sheet with its
// tables. Some rows are out of line on purpose: they are what the sample scripts put right. Those scripts
// name objects by handle, so each kind starts at a fixed one:
//   380 building labels (380-385 the six slabs, bottom row first)    3A0 storeys, in the same order
//   400 row of trees along the south                                 540 parking numbers
//   700 names in the table of figures, 710 their numbers
#include "drawings.h"

#include "Pen.h"

#include <array>

namespace samples {
namespace {

constexpr Point sheetMin{-47, -43}, sheetMax{250, 167};
constexpr double streetY = -12, streetX = -12; // kerbs towards the site
constexpr double gateLeft = 93.5, gateRight = 102.5;

Frame siteFrame() {
    return {Version::r2000,
            Unit::metre,
            sheetMin,
            sheetMax,
            {{"用地红线", 1, "CENTER", LayerState::locked},
             {"道路", 8},
             {"道路中心线", 1, "CENTER"},
             {"建筑", 7, "Continuous", LayerState::shown, 50},
             {"标注", 3},
             {"绿化", 92},
             {"停车", 140},
             {"坐标", 4},
             {"图框", 7},
             {"管线", 6, "DASHED", LayerState::frozen},
             {"施工临时", 30, "DASHED", LayerState::off}},
            "建筑",
            "汉字",
            "GENAPP",
            0.5,
            2.5};
}

void defineBlocks(Drawing& drawing) {
    drawing.block("乔木", [](Pen& pen) {
        pen.circle({0, 0}, 2);
        pen.circle({0, 0}, 0.25);
        for (int spoke = 0; spoke < 8; ++spoke)
            pen.line(polar({}, spoke * 45 + 10, 0.25), polar({}, spoke * 45, 1.7));
    });
    drawing.block("灌木", [](Pen& pen) {
        constexpr double b = 0.8;
        pen.polyline({{0.9, 0, b}, {0.3, 0.8, b}, {-0.7, 0.6, b}, {-0.7, -0.6, b}, {0.3, -0.8, b}},
                     Closed::yes);
    });
    drawing.block("指北针", [](Pen& pen) {
        pen.circle({0, 0}, 6);
        pen.polyline({{0, 6}, {-2.2, -5.2}, {0, -3.6}, {2.2, -5.2}}, Closed::yes);
        pen.line({0, 6}, {0, -3.6});
        pen.text({0, 7}, 3, "北", Justify::centre);
    });
    drawing.block("小汽车", [](Pen& pen) {
        pen.polyline({{0.3, 0}, {4.4, 0, 0.2}, {4.4, 1.7}, {0.3, 1.7, 0.3}}, Closed::yes);
        pen.rectangle({1.2, 0.2}, 2.2, 1.3);
    });
}

// The two streets meet in the south-west; the ring road of the site opens into the southern one.
void drawStreets(Pen& pen) {
    pen.line({0, streetY}, {gateLeft - 8, streetY});
    pen.line({gateRight + 8, streetY}, {211, streetY});
    pen.line({-34.5, -34}, {211, -34});
    pen.line({streetX, 0}, {streetX, 162});
    pen.line({-30, -7.5}, {-30, 162});
    pen.arc({0, 0}, 12, 180, 270);
    pen.arc({-34.5, -7.5}, 4.5, 270, 0);
    pen.line({gateLeft, -4}, {gateLeft, 5});
    pen.line({gateRight, -4}, {gateRight, 5});
    pen.arc({gateLeft - 8, -4}, 8, 270, 0);
    pen.arc({gateRight + 8, -4}, 8, 180, 270);
    pen.arc({gateLeft - 6, 5}, 6, 0, 90);
    pen.arc({gateRight + 6, 5}, 6, 90, 180);
}

struct Rounded {
    Point min, max;
    double radius;
};

void drawRoundedCorners(Pen& pen, const Rounded& r) {
    const auto [min, max, radius] = r;
    pen.line({min.x, min.y + radius}, {min.x, max.y - radius});
    pen.line({max.x, min.y + radius}, {max.x, max.y - radius});
    pen.line({min.x + radius, max.y}, {max.x - radius, max.y});
    pen.arc({min.x + radius, min.y + radius}, radius, 180, 270);
    pen.arc({max.x - radius, min.y + radius}, radius, 270, 0);
    pen.arc({max.x - radius, max.y - radius}, radius, 0, 90);
    pen.arc({min.x + radius, max.y - radius}, radius, 90, 180);
}

void drawRoads(Pen& pen) {
    pen.layer("道路");
    drawStreets(pen);
    drawRoundedCorners(pen, {{9, 11}, {187, 123}, 12});
    pen.line({21, 11}, {gateLeft - 6, 11});
    pen.line({gateRight + 6, 11}, {175, 11});
    drawRoundedCorners(pen, {{15, 17}, {181, 117}, 6});
    pen.line({21, 17}, {175, 17});
    pen.layer("道路中心线");
    pen.line({-34.5, -23}, {211, -23});
    pen.line({-21, -23}, {-21, 162});
    pen.line({98, -23}, {98, 14});
    pen.text({30, -22}, 4, "人  民  路", Justify::left);
    pen.text({150, -22}, 4, "人  民  路", Justify::left);
    pen.text({-22, 60}, 4, "学  府  路", Justify::left, 90);
}

void drawBoundary(Pen& pen) {
    pen.layer("用地红线");
    pen.polyline({{10, 0}, {200, 0}, {200, 134}, {0, 134}, {0, 10}}, Closed::yes, 0.35);
    pen.layer("管线");
    pen.line({4, 4}, {196, 4});
    pen.line({196, 4}, {196, 130});
    pen.layer("施工临时");
    pen.polyline({{20, 20}, {178, 20}, {178, 114}, {20, 114}}, Closed::yes);
}

// A slab of flats, 36 x 13, with two stair bays on its north side.
std::vector<Vertex> slab(Point p) {
    const auto at = [p](double x, double y) { return Vertex(p + Point{x, y}); };
    return {at(0, 0),     at(10, 0),    at(10, -1.2), at(14, -1.2), at(14, 0),    at(22, 0),    at(22, -1.2),
            at(26, -1.2), at(26, 0),    at(36, 0),    at(36, 12),   at(28.5, 12), at(28.5, 13), at(25.5, 13),
            at(25.5, 12), at(10.5, 12), at(10.5, 13), at(7.5, 13),  at(7.5, 12),  at(0, 12)};
}

constexpr std::array<Point, 6> slabs{{{24, 26}, {72, 26}, {24, 58}, {72, 58}, {24, 90}, {72, 90}}};

void drawBuildings(Pen& pen) {
    pen.series(0x300);
    pen.layer("建筑");
    for (const auto& corner : slabs) pen.polyline(slab(corner), Closed::yes);
    // 7#: a tower whose corners are quarter circles; 8#: a kindergarten with round classrooms.
    constexpr double quarter = 0.41421356237310;
    pen.polyline({{128, 92},
                  {144, 92, quarter},
                  {147, 95},
                  {147, 107, quarter},
                  {144, 110},
                  {128, 110, quarter},
                  {125, 107},
                  {125, 95, quarter}},
                 Closed::yes);
    pen.polyline({{126, 26},
                  {172, 26},
                  {172, 36},
                  {164, 36},
                  {164, 44, 1},
                  {152, 44},
                  {152, 38},
                  {148, 38},
                  {148, 44, 1},
                  {136, 44},
                  {136, 36},
                  {126, 36}},
                 Closed::yes);
    pen.rectangle({156, 95}, 18, 12);
}

struct Label {
    Point at;
    const char* text;
};

void drawBuildingLabels(Pen& pen) {
    pen.layer("标注");
    pen.series(0x380);
    constexpr std::array<Label, 6> names{{{{26.4, 30.2}, "1#住宅楼"},
                                          {{79.6, 31.5}, "2#住宅楼"},
                                          {{30.1, 62.6}, "3#住宅楼"},
                                          {{75.2, 61.4}, "4#住宅楼"},
                                          {{27.7, 95.3}, "5#住宅楼"},
                                          {{81.9, 93.8}, "6#住宅楼"}}};
    for (const auto& name : names) pen.text(name.at, 2.5, name.text);
    pen.text({136, 100.5}, 2.5, "7#公寓", Justify::centre);
    pen.text({149, 30}, 2.5, "8#幼儿园", Justify::centre);
    pen.text({165, 100}, 2.2, "物业用房", Justify::centre);
    pen.series(0x3A0);
    constexpr std::array<Label, 9> storeys{{{{58.6, 34.9}, "6F"},
                                            {{104.1, 35.8}, "6F"},
                                            {{56.2, 66.9}, "6F"},
                                            {{107.3, 67.7}, "6F"},
                                            {{59.1, 98.2}, "6+1F"},
                                            {{105.4, 99.6}, "6+1F"},
                                            {{145.5, 106}, "18F"},
                                            {{170.5, 32}, "3F"},
                                            {{173, 104}, "1F"}}};
    for (const auto& storey : storeys) pen.text(storey.at, 1.8, storey.text, Justify::right);
}

void drawGreen(Pen& pen) {
    pen.series(0x400);
    pen.layer("绿化");
    struct Tree {
        double x, y, scale;
    };
    for (const auto& [x, y, scale] : {Tree{18, 5.1, 1}, Tree{23.5, 6.2, 1.1}, Tree{33.8, 4.6, 0.9},
                                      Tree{37.9, 5.4, 1}, Tree{48.2, 6.4, 1.2}, Tree{53.4, 4.9, 0.8},
                                      Tree{66.1, 5.6, 1}, Tree{70.6, 4.4, 1.1}, Tree{81, 5.3, 1}})
        pen.insert("乔木", {x, y}, {scale, scale});
    pen.series(0x440);
    for (int i = 0; i < 9; ++i) pen.insert("乔木", {116 + i * 7.5, 5.5}, {1, 1, i * 17.0});
    for (int i = 0; i < 13; ++i) pen.insert("乔木", {4.5, 22 + i * 8.0}, {1.1, 1.1, i * 23.0});
    for (int i = 0; i < 20; ++i) pen.insert("乔木", {16 + i * 8.5, 128.5}, {1, 1, i * 31.0});
    // The garden: a lawn with a round place in it, and paths that leave it.
    pen.polyline({{122, 58, 0.15}, {174, 58, 0.3}, {174, 84, 0.15}, {122, 84, 0.3}}, Closed::yes);
    pen.circle({148, 71}, 8);
    pen.circle({148, 71}, 3);
    for (int i = 0; i < 12; ++i) pen.insert("灌木", polar({148, 71}, i * 30 + 15, 10.2), {1, 1, i * 30.0});
    for (const Point p : {Point{130, 64}, {128, 78}, {136, 81}, {166, 63}, {168, 77}, {160, 82}, {163, 58.5}})
        pen.insert("乔木", p, {1.3, 1.3, p.x});
    for (const auto& corner : slabs) {
        pen.polyline({{corner + Point{1, -6.5}, 0},
                      {corner + Point{35, -6.5}, 0.5},
                      {corner + Point{35, -2.8}, 0},
                      {corner + Point{1, -2.8}, 0.5}},
                     Closed::yes);
        for (int i = 0; i < 8; ++i)
            pen.insert("灌木", corner + Point{4 + i * 4.0, -4.6}, {0.9, 0.9, i * 40.0});
    }
}

void drawParking(Pen& pen) {
    constexpr int bays = 23, numbered = 20; // the last three stand full of cars
    constexpr double bottom = 30, pitch = 2.5, kerb = 187, depth = 5.3;
    pen.series(0x500);
    pen.layer("停车");
    for (int i = 0; i <= bays; ++i) pen.line({kerb, bottom + i * pitch}, {kerb + depth, bottom + i * pitch});
    pen.line({kerb + depth, bottom}, {kerb + depth, bottom + bays * pitch});
    pen.series(0x540);
    constexpr std::array shifts{0.0, 0.9, -0.7, 0.4, -1.1, 0.8, 0.2, -0.5, 1.2, -0.9};
    for (int i = 0; i < numbered; ++i) {
        const auto number = (i < 9 ? "P0" : "P") + std::to_string(i + 1);
        const double x = kerb + depth / 2 + shifts[static_cast<std::size_t>(i) % shifts.size()];
        pen.text({x, bottom + (i + 0.5) * pitch}, 0.9, number, Justify::middleCentre);
    }
    pen.series(0x580);
    for (int i = numbered; i < bays; ++i) pen.insert("小汽车", {kerb + 0.4, bottom + i * pitch + 0.4});
    pen.text({194.5, 58}, 1.6, "地面停车23辆", Justify::middleCentre, 90);
}

// A leader from the surveyed point to a shelf with the two coordinates on it.
void drawCoordinate(Pen& pen, Point p, Point elbow, const char* x, const char* y) {
    const double direction = elbow.x < p.x ? -1 : 1;
    const Point end = elbow + Point{16 * direction, 0};
    pen.line(p, elbow);
    pen.line(elbow, end);
    const double left = direction < 0 ? end.x : elbow.x;
    pen.text({left + 0.5, elbow.y + 0.5}, 1.5, x);
    pen.text({left + 0.5, elbow.y - 2}, 1.5, y);
}

void drawCoordinates(Pen& pen) {
    pen.series(0x600);
    pen.layer("坐标");
    drawCoordinate(pen, {0, 134}, {3, 142}, "X=3512.640", "Y=4806.115");
    drawCoordinate(pen, {200, 134}, {192, 142}, "X=3512.640", "Y=5006.115");
    drawCoordinate(pen, {200, 0}, {192, -5}, "X=3378.640", "Y=5006.115");
    drawCoordinate(pen, {10, 0}, {16, -6}, "X=3378.640", "Y=4816.115");
    for (const Point p : {Point{0, 134}, {200, 134}, {200, 0}, {10, 0}}) {
        pen.point(p);
        pen.circle(p, 0.6);
    }
    pen.layer("标注");
    pen.text({99, 145}, 6, "总平面图  1:500", Justify::centre);
    pen.line({74, 143}, {124, 143});
    pen.line({74, 142.4}, {124, 142.4});
}

// Names out of line at the left, numbers at the right: as such tables look after a few revisions.
void drawFigures(Pen& pen) {
    struct Row {
        const char* name;
        double nameX;
        const char* number;
        double numberX;
    };
    constexpr std::array<Row, 7> rows{{{"总用地面积", 213.1, "26750㎡", 243.2},
                                       {"总建筑面积", 214.6, "42168㎡", 241.8},
                                       {"住宅建筑面积", 212.6, "34310㎡", 243.9},
                                       {"容积率", 215.2, "1.58", 242.4},
                                       {"建筑密度", 213.4, "16.4%", 240.9},
                                       {"绿地率", 212.9, "36.2%", 243.5},
                                       {"停车位", 214.1, "186辆", 241.3}}};
    constexpr double left = 211, right = 245, top = 150, pitch = 6;
    pen.series(0x6C0);
    pen.layer("图框");
    pen.text({228, 153}, 3, "技术经济指标", Justify::centre);
    for (std::size_t i = 0; i <= rows.size(); ++i)
        pen.line({left, top - static_cast<double>(i) * pitch}, {right, top - static_cast<double>(i) * pitch});
    pen.line({229, top}, {229, top - rows.size() * pitch});
    const auto baseLine = [&](std::size_t row) { return top - static_cast<double>(row) * pitch - 4; };
    pen.series(0x700);
    for (std::size_t i = 0; i < rows.size(); ++i) pen.text({rows[i].nameX, baseLine(i)}, 2, rows[i].name);
    pen.series(0x710);
    for (std::size_t i = 0; i < rows.size(); ++i)
        pen.text({rows[i].numberX, baseLine(i)}, 2, rows[i].number, Justify::right);
}

void drawLegend(Pen& pen) {
    pen.series(0x740);
    pen.text({228, 96}, 3, "图例", Justify::centre);
    pen.layer("用地红线");
    pen.line({214, 89}, {224, 89});
    pen.layer("建筑");
    pen.polyline({{214, 80}, {224, 80}, {224, 84}, {214, 84}}, Closed::yes);
    pen.layer("绿化");
    pen.insert("乔木", {219, 75});
    pen.insert("灌木", {219, 68});
    pen.layer("停车");
    pen.rectangle({215.5, 59.5}, 5.3, 2.5);
    pen.layer("标注");
    const char* names[] = {"用地红线", "新建建筑", "乔木", "灌木", "停车位"};
    double y = 88;
    for (const char* name : names) {
        pen.text({228, y}, 2, name);
        y -= 7;
    }
}

void drawTitle(Pen& pen) {
    pen.layer("图框");
    pen.rectangle(sheetMin, 297, 210);
    pen.polyline({{-34.5, -38}, {245, -38}, {245, 162}, {-34.5, 162}}, Closed::yes, 0.5);
    pen.line({211, -38}, {211, 162});
    const char* rows[] = {
        "项目名称  学府花园小区", "图名  总平面图", "图号  总施-01", "比例  1:500", "设计", "校对", "审核"};
    double y = 8;
    for (const char* row : rows) {
        pen.line({211, y}, {245, y});
        pen.text({212.5, y - 4.3}, 2, row);
        y -= 6.5;
    }
    pen.line({222, -18}, {222, -38});
    pen.insert("指北针", {228, 38});
    pen.multilineText(
        {212.5, 26}, 1.6, 31,
        "说明：\\P1. 坐标为城市坐标，单位为米。\\P2. 建筑定位点为外墙角点。\\P3. 道路转弯半径见图。");
}

} // namespace

std::string siteplan() {
    Drawing drawing(siteFrame(), LineEnd::crlf, Encoding::gbk);
    defineBlocks(drawing);
    Pen& pen = drawing.pen();
    pen.series(0x200);
    drawBoundary(pen);
    drawRoads(pen);
    drawBuildings(pen);
    drawBuildingLabels(pen);
    drawGreen(pen);
    drawParking(pen);
    drawCoordinates(pen);
    drawFigures(pen);
    drawLegend(pen);
    drawTitle(pen);
    return drawing.bytes();
}

} // namespace samples
