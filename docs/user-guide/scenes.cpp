// generateGuide FOLDER: writes the drawings and scripts of which the user guide shows the pictures, two files
// for each picture. A drawing has its scene twice: on the left as a person finds it, on the right the same,
// which the script then aligns.
#include "Pen.h"

#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using samples::Closed;
using samples::Drawing;
using samples::Group;
using samples::GroupScope;
using samples::Handle;
using samples::Justify;
using samples::Pen;
using samples::Point;
using samples::polar;
using samples::turned;

constexpr Point sceneSize{100, 70};
constexpr double gap = 20;

/// One of the two places where a scene is drawn; points are relative to it.
class Stage {
public:
    Stage(Drawing& drawing, double shift) : pen{drawing.pen()}, drawing_{drawing}, shift_{shift} {}

    Point at(double x, double y) const { return {x + shift_, y}; }
    Group& group(const std::string& name) { return drawing_.group(name + (shift_ > 0 ? "右" : "左"), ""); }
    void onLayer(const char* name) { pen.layer(name); }

    // What the script refers to.
    std::vector<Handle> objects;
    Handle target = 0, baseLine = 0;

    Pen& pen;

private:
    Drawing& drawing_;
    double shift_;
};

/// Writes answers; the points are relative to the stage.
class Script {
public:
    explicit Script(const Stage& stage) : stage_{stage} {}

    Script& line(std::string_view text) {
        text_.append(text) += '\n';
        return *this;
    }
    Script& lines(const std::vector<std::string_view>& texts) {
        for (const std::string_view each : texts) line(each);
        return *this;
    }
    Script& point(Point p) { return line(coordinates(p, ",")); }
    /// That object, picked there.
    Script& pick(Handle object, Point p) {
        return line("(list (handent \"" + hex(object) + "\") (list " + coordinates(p, " ") + " 0))");
    }
    Script& objects(const std::vector<Handle>& handles) {
        for (const Handle each : handles) line("(handent \"" + hex(each) + "\")");
        return line("");
    }
    const std::string& text() const { return text_; }

private:
    static std::string hex(Handle handle) {
        char digits[20];
        std::snprintf(digits, sizeof digits, "%llX", static_cast<unsigned long long>(handle));
        return digits;
    }
    std::string coordinates(Point p, const char* between) const {
        const Point there = stage_.at(p.x, p.y);
        char both[64];
        std::snprintf(both, sizeof both, "%.10g%s%.10g", there.x, between, there.y);
        return both;
    }

    const Stage& stage_;
    std::string text_;
};

// ---- marks

void mark(Stage& stage, Point p, const char* name) {
    stage.onLayer("辅助");
    stage.pen.line(stage.at(p.x - 1.5, p.y - 1.5), stage.at(p.x + 1.5, p.y + 1.5));
    stage.pen.line(stage.at(p.x - 1.5, p.y + 1.5), stage.at(p.x + 1.5, p.y - 1.5));
    stage.pen.text(stage.at(p.x + 2.5, p.y + 1.5), 3, name);
    stage.onLayer("对象");
}

void basePoint(Stage& stage, Point p) { mark(stage, p, "基点"); }

void level(Stage& stage, double y) {
    stage.onLayer("辅助");
    stage.pen.line(stage.at(0, y), stage.at(sceneSize.x, y));
    stage.onLayer("对象");
}

void upright(Stage& stage, double x) {
    stage.onLayer("辅助");
    stage.pen.line(stage.at(x, 2), stage.at(x, sceneSize.y));
    stage.onLayer("对象");
}

// ---- KV_PositionAlign

constexpr Point rowBase{2, 40}, columnBase{50, 66};

Handle triangle(Stage& stage, Point p, double size) {
    return stage.pen.polyline(
        {stage.at(p.x, p.y), stage.at(p.x + size, p.y), stage.at(p.x + size / 2, p.y + size)}, Closed::yes);
}

void row(Stage& stage) {
    stage.objects = {stage.pen.rectangle(stage.at(8, 22), 14, 10), stage.pen.circle(stage.at(32, 45), 7),
                     stage.pen.text(stage.at(44, 18), 7, "阀门"), triangle(stage, {82, 40}, 12)};
}

void column(Stage& stage) {
    stage.objects = {stage.pen.rectangle(stage.at(18, 50), 20, 9), stage.pen.circle(stage.at(64, 42), 6),
                     stage.pen.text(stage.at(30, 26), 7, "水泵"), triangle(stage, {58, 5}, 12)};
}

void rowWithLine(Stage& stage) {
    row(stage);
    level(stage, rowBase.y);
    basePoint(stage, rowBase);
}

void columnWithLine(Stage& stage) {
    column(stage);
    upright(stage, columnBase.x);
    basePoint(stage, columnBase);
}

void aroundPoint(Stage& stage) {
    stage.objects = {stage.pen.rectangle(stage.at(4, 40), 24, 24), stage.pen.circle(stage.at(80, 50), 9),
                     stage.pen.text(stage.at(8, 12), 5, "P1"), stage.pen.circle(stage.at(82, 16), 17)};
    basePoint(stage, {46, 35});
}

/// Three groups, each a box, a line and a text; the first member stands for the group.
void groupsInRow(Stage& stage) {
    const Point corners[] = {{6, 20}, {40, 38}, {72, 12}};
    const char* const names[] = {"G1", "G2", "G3"};
    for (int i = 0; i < 3; ++i) {
        const GroupScope scope{stage.pen, stage.group(names[i])};
        const Point c = corners[i];
        stage.objects.push_back(stage.pen.rectangle(stage.at(c.x, c.y), 22, 8.0 + 3 * i));
        stage.pen.line(stage.at(c.x + 11, c.y + 8 + 3 * i), stage.at(c.x + 11, c.y + 14 + 3 * i));
        stage.pen.text(stage.at(c.x + 11, c.y + 4 + 1.5 * i), 5, names[i], Justify::middleCentre);
    }
    level(stage, 46);
    basePoint(stage, {2, 46});
}

std::string positionScript(const Stage& stage, const std::vector<std::string_view>& answers, Point base) {
    return Script{stage}.line("KV_PositionAlign").lines(answers).objects(stage.objects).point(base).text();
}

std::string distributionScript(const Stage& stage, std::string_view action) {
    return Script{stage}.line("KV_PositionAlign").lines({"O", action}).objects(stage.objects).text();
}

// ---- KV_ObjectAlign

constexpr double slope = 20; // of the line to align to, in degrees
constexpr Point lineFrom{4, 6}, lineTo = {98, 6 + 94 * 0.363970234266202};
constexpr Point onLine{80, 6 + 76 * 0.363970234266202};
constexpr Point centre{50, 22};
constexpr double radius = 18;

void target(Stage& stage) {
    stage.onLayer("目标");
    stage.target = stage.pen.line(stage.at(lineFrom.x, lineFrom.y), stage.at(lineTo.x, lineTo.y));
    stage.onLayer("对象");
}

void circularTarget(Stage& stage) {
    stage.onLayer("目标");
    stage.target = stage.pen.circle(stage.at(centre.x, centre.y), radius);
    stage.onLayer("对象");
}

void loose(Stage& stage) {
    stage.objects = {stage.pen.text(stage.at(6, 26), 5, "给水"),
                     stage.pen.insert("箭头", stage.at(32, 38), {1, 1, 100}),
                     stage.pen.polyline({stage.at(44, 42), stage.at(60, 36), stage.at(62, 42)}, Closed::no),
                     stage.pen.line(stage.at(66, 55), stage.at(80, 45))};
}

void looseAtLine(Stage& stage) {
    target(stage);
    loose(stage);
}

void labelAtLine(Stage& stage) {
    target(stage);
    stage.objects = {stage.pen.text(stage.at(10, 50), 5, "DN100")};
    mark(stage, onLine, "");
}

constexpr Point onCircle = {50 + 18 * 0.766044443118978, 22 + 18 * 0.642787609686539};

void labelAtCircle(Stage& stage) {
    circularTarget(stage);
    stage.objects = {stage.pen.text(stage.at(6, 56), 5, "N1 进水口")};
    mark(stage, onCircle, "");
}

// A pump: its base plate first, of which the lower edge is the base line.
constexpr Point plateFrom{14, 52};
constexpr double plateTurn = -25;

Point onPump(double along, double across) {
    const Point p = turned({along, across}, plateTurn);
    return {plateFrom.x + p.x, plateFrom.y + p.y};
}

void pump(Stage& stage) {
    const auto at = [&](double along, double across) {
        const Point p = onPump(along, across);
        return stage.at(p.x, p.y);
    };
    stage.objects = {stage.pen.polyline({at(0, 0), at(26, 0), at(26, 3), at(0, 3)}, Closed::yes),
                     stage.pen.circle(at(8, 9), 6),
                     stage.pen.text(at(15, 5), 5, "P-1", Justify::left, plateTurn)};
    stage.baseLine = stage.objects.front();
}

void pumpAtLine(Stage& stage) {
    target(stage);
    pump(stage);
}

void pumpAtCircle(Stage& stage) {
    circularTarget(stage);
    pump(stage);
    mark(stage, onCircle, "");
}

void pumpGroupAtLine(Stage& stage) {
    target(stage);
    {
        const GroupScope scope{stage.pen, stage.group("泵")};
        pump(stage);
    }
    stage.objects.resize(1);
}

void pumpGroupAtCircle(Stage& stage) {
    circularTarget(stage);
    {
        const GroupScope scope{stage.pen, stage.group("泵")};
        pump(stage);
    }
    stage.objects.resize(1);
    mark(stage, onCircle, "");
}

void drain(Stage& stage) {
    target(stage);
    stage.objects = {stage.pen.polyline(
        {stage.at(10, 60), stage.at(30, 64), stage.at(40, 48), stage.at(22, 44)}, Closed::no)};
    mark(stage, onLine, "");
}

void arrows(Stage& stage) {
    target(stage);
    stage.objects = {stage.pen.insert("箭头", stage.at(20, 36), {1, 1, 70}),
                     stage.pen.insert("箭头", stage.at(46, 50), {1, 1, 150}),
                     stage.pen.insert("箭头", stage.at(70, 52), {1, 1, 160})};
}

std::string toLine(const Stage& stage, std::string_view spacing, int clicks = 0) {
    Script script{stage};
    script.line("KV_ObjectAlign").lines({"O", "S", spacing, "L"}).objects(stage.objects);
    script.pick(stage.target, lineFrom);
    for (int i = 0; i < clicks; ++i) script.point(lineTo);
    return script.line("").text();
}

std::string toPoint(const Stage& stage, std::string_view spacing, Point point) {
    Script script{stage};
    script.line("KV_ObjectAlign").lines({"O", "S", spacing, "P"}).objects(stage.objects);
    return script.pick(stage.target, point).point(point).line("").text();
}

std::string asWhole(const Stage& stage, const std::vector<std::string_view>& mode, std::string_view action,
                    Point targetPoint) {
    Script script{stage};
    script.line("KV_ObjectAlign").lines(mode).lines({"3", action}).objects(stage.objects);
    script.pick(stage.baseLine, onPump(13, 0)).point(onPump(13, 0));
    script.pick(stage.target, targetPoint);
    if (action == "P") script.point(targetPoint);
    return script.line("").text();
}

std::string segments(const Stage& stage, std::string_view action) {
    Script script{stage};
    script.line("KV_ObjectAlign").lines({"P", "3", action});
    script.pick(stage.objects.front(), {35, 56}).line("");
    script.pick(stage.target, onLine);
    if (action == "P") script.point(onLine);
    return script.line("").text();
}

// ---- pictures

struct Picture {
    const char* name;
    void (*draw)(Stage&);
    std::string (*script)(const Stage&);
};

constexpr Picture pictures[] = {
    {"position-top", rowWithLine,
     [](const Stage& s) {
         return positionScript(s, {"O", "T", "0"}, rowBase);
     }},
    {"position-bottom", rowWithLine,
     [](const Stage& s) {
         return positionScript(s, {"O", "B", "0"}, rowBase);
     }},
    {"position-left", columnWithLine,
     [](const Stage& s) {
         return positionScript(s, {"O", "L", "0"}, columnBase);
     }},
    {"position-right", columnWithLine,
     [](const Stage& s) {
         return positionScript(s, {"O", "R", "0"}, columnBase);
     }},
    {"position-horizontal-centre", columnWithLine,
     [](const Stage& s) {
         return positionScript(s, {"O", "HC"}, columnBase);
     }},
    {"position-vertical-centre", rowWithLine,
     [](const Stage& s) {
         return positionScript(s, {"O", "VC"}, rowBase);
     }},
    {"position-centre", aroundPoint,
     [](const Stage& s) {
         return positionScript(s, {"O", "C"}, {46, 35});
     }},
    {"position-offset", rowWithLine,
     [](const Stage& s) {
         return positionScript(s, {"O", "T", "5"}, rowBase);
     }},
    {"position-across", row, [](const Stage& s) { return distributionScript(s, "HD"); }},
    {"position-down", column, [](const Stage& s) { return distributionScript(s, "VD"); }},
    {"position-groups", groupsInRow,
     [](const Stage& s) {
         return positionScript(s, {"G", "B", "0"}, {2, 46});
     }},
    {"object-turned", looseAtLine, [](const Stage& s) { return toLine(s, ""); }},
    {"object-spaced", looseAtLine, [](const Stage& s) { return toLine(s, "3"); }},
    {"object-at-point", labelAtLine, [](const Stage& s) { return toPoint(s, "2", onLine); }},
    {"object-at-circle", labelAtCircle, [](const Stage& s) { return toPoint(s, "2", onCircle); }},
    {"object-whole-line", pumpAtLine,
     [](const Stage& s) {
         return asWhole(s, {"O", "W"}, "L", onLine);
     }},
    {"object-whole-point", pumpAtCircle,
     [](const Stage& s) {
         return asWhole(s, {"O", "W"}, "P", onCircle);
     }},
    {"object-group-line", pumpGroupAtLine, [](const Stage& s) { return asWhole(s, {"G"}, "L", onLine); }},
    {"object-group-point", pumpGroupAtCircle,
     [](const Stage& s) { return asWhole(s, {"G"}, "P", onCircle); }},
    {"object-segment-line", drain, [](const Stage& s) { return segments(s, "L"); }},
    {"object-segment-point", drain, [](const Stage& s) { return segments(s, "P"); }},
    {"object-unflipped", arrows, [](const Stage& s) { return toLine(s, "0"); }},
    {"object-flipped", arrows, [](const Stage& s) { return toLine(s, "0", 1); }},
};

samples::Frame frameOf() {
    samples::Frame frame;
    frame.max = {2 * sceneSize.x + gap, sceneSize.y};
    frame.layers = {
        {"对象"}, {"目标", 5, "Continuous", samples::LayerState::shown, 35}, {"辅助", 1}, {"说明", 8}};
    frame.textStyle = "汉字";
    frame.textSize = 5;
    return frame;
}

bool put(const std::string& path, const std::string& bytes) {
    std::ofstream out{path, std::ios::binary};
    out << bytes << std::flush;
    if (!out) std::fprintf(stderr, "generateGuide: can't write %s\n", path.c_str());
    return static_cast<bool>(out);
}

bool write(const Picture& picture, const std::string& path) {
    Drawing drawing{frameOf(), samples::LineEnd::lf, samples::Encoding::utf8};
    drawing.block("箭头", [](Pen& pen) { pen.polyline({{8, 0}, {-8, 3}, {-5, 0}, {-8, -3}}, Closed::yes); });
    Stage before{drawing, 0}, after{drawing, sceneSize.x + gap};
    for (Stage* each : {&before, &after}) picture.draw(*each);
    drawing.pen().layer("说明");
    drawing.pen().rectangle({-4, -12}, sceneSize.x + 8, sceneSize.y + 16);
    drawing.pen().rectangle(after.at(-4, -12), sceneSize.x + 8, sceneSize.y + 16);
    drawing.pen().text({0, -9}, 4, "对齐前");
    drawing.pen().text(after.at(0, -9), 4, "对齐后");
    return put(path + ".dxf", drawing.bytes()) && put(path + ".scr", picture.script(after));
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: generateGuide FOLDER\n");
        return 1;
    }
    bool allGood = true;
    for (const Picture& each : pictures) allGood &= write(each, std::string{arguments[1]} + '/' + each.name);
    return allGood ? 0 : 2;
}
