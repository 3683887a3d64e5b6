#include "tests/objectalign/Sheet.h"

#include "dbents.h"
#include "dbmtext.h"
#include "kernel/plane.h"
#include "shape/Sink.h"

#include <cmath>
#include <map>
#include <numbers>
#include <sstream>

namespace qx::tests {
using namespace drawings;
namespace {

const std::map<std::string, std::string> snippetNames = {
    {"line", "LINE"},
    {"circle", "CIRCLE"},
    {"arc", "ARC"},
    {"text", "TEXT|1 H"},
    {"lw", ""},
    {"angle", "INSERT|2 Angle"},
    {"hang", "INSERT|2 Down"},
    {"mtext", "MTEXT|46 12|71 7|1 H"},
};

struct Notation {
    struct Vertex {
        AcGePoint3d point;
        double bulge = 0;
    };
    std::string kind, layer = "0", groups; ///< those besides points
    std::vector<Vertex> vertices;
    double height = 0;
    int flags = 0;
    bool isSpline = false;

    explicit Notation(const std::string& notation) {
        std::istringstream words{notation};
        words >> kind;
        for (std::string word; words >> word;) read(word);
    }

private:
    void read(const std::string& word) {
        const std::string rest = word.substr(1);
        const char first = word[0];
        if (word == "closed") flags |= 1;
        if (word == "spline") isSpline = true;
        if (word == "down") groups += "|210 0|220 0|230 -1";
        if (word == "LOCKED") layer = word;
        if (first == 'z') height = std::stod(rest);
        if (first == 'b') vertices.back().bulge = std::stod(rest);
        if (first == 'r' || first == 'h') groups += "|40 " + rest;
        if (first == '<' || first == 'a') groups += "|50 " + rest.substr(0, rest.find(".."));
        if (first == 'a') groups += "|51 " + rest.substr(rest.find("..") + 2);
        if (first == '-' || std::isdigit(first)) vertices.push_back({pointOf(word)});
    }
};

Handle drawOlderPolyline(DrawingText& drawing, const Notation& n) {
    const bool isInSpace = n.kind == "3d";
    const int flags = n.flags | (isInSpace ? 8 : 0) | (n.isSpline ? 4 : 0);
    const Handle header = drawing.add("POLYLINE|8 " + n.layer + tag(30, n.height) + n.groups +
                                      "|66 1|10 0|20 0|70 " + std::to_string(flags));
    for (std::size_t i = 0; i < n.vertices.size(); ++i) {
        const bool isFrame = n.isSpline && (i == 0 || i + 1 == n.vertices.size());
        const int kind = (isInSpace ? 32 : 0) | (isFrame ? 16 : n.isSpline ? 8 : 0);
        const AcGePoint3d& p = n.vertices[i].point;
        drawing.add("VERTEX|8 " + n.layer + point(10, {p.x, p.y, isInSpace ? p.z : n.height}) +
                    tag(42, n.vertices[i].bulge) + "|70 " + std::to_string(kind));
    }
    drawing.add("SEQEND");
    return header;
}

Handle drawLightPolyline(DrawingText& drawing, const Notation& n) {
    std::string snippet = "LWPOLYLINE|8 " + n.layer + tag(38, n.height) + n.groups + "|90 " +
                          std::to_string(n.vertices.size()) + "|70 " + std::to_string(n.flags);
    for (const auto& [point, bulge] : n.vertices)
        snippet += tag(10, point.x) + tag(20, point.y) + (bulge != 0 ? tag(42, bulge) : "");
    return drawing.add(snippet);
}

class Pose final : public shape::Sink {
public:
    void segment(const shape::Segment& segment) override { note(segment.start, segment.end - segment.start); }
    void arc(const shape::EllipticArc& arc) override { note(arc.centre, arc.u); }
    void text(const shape::TextRun& run) override { note(run.origin, run.along); }

    void note(const AcGePoint3d& at, const AcGeVector3d& way) {
        if (begin.empty()) begin.push_back(at);
        if (std::hypot(along.x, along.y) == 0) along = way;
    }

    std::vector<AcGePoint3d> begin;
    AcGeVector3d along;
};
} // namespace

DrawingText withBlocks() {
    return {.blocks = {{"Down", {"LINE|10 0|20 0|11 0|21 -5"}},
                       {"Angle", {"LINE|10 0|20 0|11 4|21 0", "LINE|10 0|20 0|11 0|21 2"}}}};
}

Handle draw(DrawingText& drawing, const std::string& notation) {
    if (notation.find('|') != std::string::npos) return drawing.add(notation);
    const Notation n{notation};
    if (n.kind == "lw") return drawLightPolyline(drawing, n);
    if (n.kind == "2d" || n.kind == "3d") return drawOlderPolyline(drawing, n);
    const auto name = snippetNames.find(n.kind);
    std::string snippet = (name == snippetNames.end() ? n.kind : name->second) + "|8 " + n.layer + n.groups;
    for (std::size_t i = 0; i < n.vertices.size(); ++i)
        snippet += point(10 + static_cast<int>(i), n.vertices[i].point);
    return drawing.add(snippet);
}

std::string rounded(double value, int decimals) {
    const double unit = std::pow(10, decimals);
    char text[40];
    std::snprintf(text, sizeof text, "%.12g", std::round(value * unit) / unit + 0.0);
    return text;
}

std::string text(const AcGePoint3d& p) {
    const std::string height = rounded(p.z, 4);
    return rounded(p.x, 4) + "," + rounded(p.y, 4) + (height == "0" ? "" : "," + height);
}

std::string text(const AcGePoint2d& point) { return text(AcGePoint3d{point.x, point.y, 0}); }

AcGePoint3d pointOf(const std::string& text) {
    AcGePoint3d p;
    std::sscanf(text.c_str(), "%lf,%lf,%lf", &p.x, &p.y, &p.z);
    return p;
}

AcGePoint2d flatPointOf(const std::string& text) {
    const AcGePoint3d p = pointOf(text);
    return {p.x, p.y};
}

std::string pose(const db::Drawing& drawing, Handle handle, int decimals, int ofDegrees) {
    db::Record* record = drawing.find(handle);
    if (record->has(db::Record::erased)) return "gone";
    Pose pose;
    const AcDbEntity* entity = drawing.liveEntity(record);
    entity->shape(pose);
    const auto* text = dynamic_cast<const AcDbText*>(entity);
    const auto* lines = dynamic_cast<const AcDbMText*>(entity);
    if (text && pose.begin.empty())
        pose.note(text->position(), kernel::inSpace(kernel::unitAt(text->rotation())));
    if (lines && pose.begin.empty()) pose.note(lines->location(), lines->direction());
    if (pose.begin.empty()) return "";
    const AcGePoint3d& p = pose.begin[0];
    const double degrees = std::atan2(pose.along.y, pose.along.x) * 180 / std::numbers::pi;
    return rounded(p.x, decimals) + "," + rounded(p.y, decimals) +
           (std::abs(p.z) < 1e-9 ? "" : "," + rounded(p.z, decimals)) + "<" +
           rounded(degrees + (degrees < -std::pow(10, -ofDegrees) / 2 ? 360 : 0), ofDegrees);
}

Sheet::Sheet(const DrawingText& content)
    : editor{content.bytes()}, bytes_{content.bytes()}, entities_{handles()} {}

Sheet::Sheet(const std::vector<std::string>& entities)
    : Sheet{[&] {
          DrawingText content = withBlocks();
          for (const std::string& each : entities) draw(content, each);
          return content;
      }()} {}

std::string Sheet::run(const std::function<void()>& body) {
    std::string said;
    auto& listener = editor.session.line().transcript.onMessage;
    editor.runBody([&] {
        const auto before = std::exchange(listener, [&](std::string_view message) { said += message; });
        body();
        drawing().setFault(nullptr);
        listener = before;
    });
    expectInOrder(editor);
    return said;
}

void Sheet::refuse(int k) {
    using Action = db::Drawing::Action;
    refused_ = nullptr;
    drawing().setFault([this, k, requests = 0](Action action, const db::Record* record) mutable {
        if (requests > k && action == Action::transform) ++changesAfter_;
        if (requests++ != k) return Acad::eOk;
        refused_ = record;
        return Acad::eWasOpenForWrite;
    });
}

AcDbObjectIdArray Sheet::ids(const std::vector<Handle>& handles) {
    AcDbObjectIdArray list;
    for (const Handle each : handles) list.append(idOf(drawing(), each));
    return list;
}

std::string Sheet::poses(const std::vector<Handle>& handles) {
    std::string all;
    for (const Handle each : handles) all += (all.empty() ? "" : "; ") + tests::pose(drawing(), each);
    return all;
}

std::string Sheet::drawn() {
    std::string all;
    drawing().forEachInModelSpace([&](db::Record* record) {
        if (!record->has(db::Record::isNew) || record->has(db::Record::erased)) return;
        const AcDbEntity* entity = drawing().liveEntity(record);
        all += all.empty() ? "" : "; ";
        if (const auto* line = dynamic_cast<const AcDbLine*>(entity))
            all += "line " + text(line->startPoint()) + " " + text(line->endPoint());
        if (const auto* circle = dynamic_cast<const AcDbCircle*>(entity))
            all += "circle " + text(circle->center()) + " r" + rounded(circle->radius(), 4);
    });
    return all;
}

std::vector<Handle> Sheet::handles() {
    std::vector<Handle> living;
    drawing().forEachInModelSpace([&](db::Record* record) {
        if (!record->has(db::Record::erased)) living.push_back(record->handle);
    });
    return living;
}

bool Sheet::isUndoneToTheBytes() {
    while (drawing().history().stepsDone() > 0) drawing().history().undo();
    return hasTheFilesBytes();
}

} // namespace qx::tests
