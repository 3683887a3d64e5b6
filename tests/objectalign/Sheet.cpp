#include "tests/objectalign/Sheet.h"

#include "dbents.h"
#include "dbpl.h"

#include <cmath>
#include <numbers>
#include <sstream>

namespace qx::tests {
using namespace drawings;
namespace {

AcGePoint3d inSpace(const std::string& word) {
    std::istringstream numbers{word};
    AcGePoint3d point;
    char comma;
    numbers >> point.x >> comma >> point.y >> comma >> point.z;
    return point;
}

struct Notation {
    struct Vertex {
        AcGePoint3d point;
        double bulge = 0;
    };
    std::string kind, layer = "0", ends; ///< groups of the extrusion and of the arc's ends
    std::vector<Vertex> vertices;
    double height = 0, radius = 0;
    int flags = 0;
    bool isSpline = false;

    explicit Notation(const std::string& notation) {
        std::istringstream words{notation};
        words >> kind;
        for (std::string word; words >> word;) read(word);
    }
    std::string flat(const char* name, int heightCode) const {
        return name + ("|8 " + layer) + tag(heightCode, height) + ends;
    }

private:
    void read(const std::string& word) {
        const std::string rest = word.substr(1);
        if (word == "closed")
            flags |= 1;
        else if (word == "spline")
            isSpline = true;
        else if (word == "down")
            ends += "|210 0|220 0|230 -1";
        else if (word == "LOCKED")
            layer = word;
        else if (word[0] == 'z')
            height = std::stod(rest);
        else if (word[0] == 'b')
            vertices.back().bulge = std::stod(rest);
        else if (word[0] == 'r')
            radius = std::stod(rest);
        else if (word[0] == 'a')
            ends += "|50 " + rest.substr(0, rest.find('.')) + "|51 " + rest.substr(rest.rfind('.') + 1);
        else
            vertices.push_back({inSpace(word)});
    }
};

Handle drawOlderPolyline(DrawingText& drawing, const Notation& n) {
    const bool isInSpace = n.kind == "3d";
    const int flags = n.flags | (isInSpace ? 8 : 0) | (n.isSpline ? 4 : 0);
    const Handle header = drawing.add(n.flat("POLYLINE", 30) + "|66 1|10 0|20 0|70 " + std::to_string(flags));
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
    std::string snippet = n.flat("LWPOLYLINE", 38) + "|90 " + std::to_string(n.vertices.size()) + "|70 " +
                          std::to_string(n.flags);
    for (const auto& [point, bulge] : n.vertices)
        snippet += tag(10, point.x) + tag(20, point.y) + (bulge != 0 ? tag(42, bulge) : "");
    return drawing.add(snippet);
}

std::string shortened(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.12g", std::round(value * 1e4) / 1e4 + 0.0);
    return text;
}

std::string joined(const std::vector<AcGePoint3d>& points) {
    std::string all;
    for (const AcGePoint3d& each : points) all += (all.empty() ? "" : " ") + text(each);
    return all;
}

template <class T> const T* as(const AcDbObject* object) { return dynamic_cast<const T*>(object); }

double radiusOf(const AcDbObject* entity) {
    if (const auto* circle = as<AcDbCircle>(entity)) return circle->radius();
    if (const auto* arc = as<AcDbArc>(entity)) return arc->radius();
    return 0;
}

std::vector<AcGePoint3d> ownPoints(const AcDbObject* entity) {
    if (const auto* line = as<AcDbLine>(entity)) return {line->startPoint(), line->endPoint()};
    if (const auto* circle = as<AcDbCircle>(entity)) return {circle->center()};
    std::vector<AcGePoint3d> points;
    if (const auto* arc = as<AcDbArc>(entity)) {
        points.assign(3, arc->center());
        arc->getStartPoint(points[1]);
        arc->getEndPoint(points[2]);
    }
    if (const auto* polyline = as<AcDbPolyline>(entity))
        for (unsigned i = 0; i < polyline->numVerts(); ++i) polyline->getPointAt(i, points.emplace_back());
    return points;
}
} // namespace

Handle draw(DrawingText& drawing, const std::string& notation) {
    if (notation.find('|') != std::string::npos) return drawing.add(notation);
    const Notation n{notation};
    if (n.kind == "lw") return drawLightPolyline(drawing, n);
    if (n.kind == "2d" || n.kind == "3d") return drawOlderPolyline(drawing, n);
    const AcGePoint3d& first = n.vertices.at(0).point;
    if (n.kind == "line") return drawing.line(first, n.vertices.at(1).point, n.layer);
    const std::string name = n.kind == "arc" ? "ARC" : "CIRCLE";
    return drawing.add(name + "|8 " + n.layer + point(10, first) + tag(40, n.radius) + n.ends);
}

AcGePoint2d pointOf(const std::string& text) {
    const AcGePoint3d point = inSpace(text);
    return {point.x, point.y};
}

std::string text(const AcGePoint2d& point) { return shortened(point.x) + "," + shortened(point.y); }

std::string text(const AcGePoint3d& point) {
    const std::string height = shortened(point.z);
    return text(AcGePoint2d{point.x, point.y}) + (height == "0" ? "" : "," + height);
}

std::string text(const AcGePoint3dArray& points) { return joined({points.begin(), points.end()}); }

Sheet::Sheet(const DrawingText& content)
    : editor_{content.bytes()}, bytes_{content.bytes()}, entities_{handles()} {}

Sheet::Sheet(const std::vector<std::string>& entities)
    : Sheet{[&] {
          DrawingText content;
          for (const std::string& each : entities) draw(content, each);
          return content;
      }()} {}

std::string Sheet::run(const std::function<void()>& body) {
    std::string said;
    auto& listener = editor_.session.line().transcript.onMessage;
    editor_.runBody([&] {
        const auto before = std::exchange(listener, [&](std::string_view message) { said += message; });
        body();
        drawing().setFault(nullptr);
        listener = before;
    });
    expectInOrder(editor_);
    return said;
}

void Sheet::refuse(int k) {
    refused_ = nullptr;
    drawing().setFault([this, k, requests = 0](db::Drawing::Action, const db::Record* record) mutable {
        if (requests++ != k) return Acad::eOk;
        refused_ = record;
        return Acad::eWasOpenForWrite;
    });
}

AcDbObjectId Sheet::id(Handle handle) { return idOf(drawing(), handle); }

AcDbObjectIdArray Sheet::ids(const std::vector<Handle>& handles) {
    AcDbObjectIdArray list;
    for (const Handle each : handles) list.append(id(each));
    return list;
}

std::vector<AcGePoint3d> Sheet::points(Handle handle) {
    db::Record* record = drawing().find(handle);
    const AcDbObject* entity = drawing().live(record);
    std::vector<AcGePoint3d> points = ownPoints(entity);
    drawing().forEachOwned(record, [&](db::Record* part) {
        const AcDbObject* vertex = drawing().live(part);
        if (const auto* flat = as<AcDb2dVertex>(vertex))
            points.push_back(as<AcDb2dPolyline>(entity)->vertexPosition(*flat));
        if (const auto* inSpace = as<AcDb3dPolylineVertex>(vertex)) points.push_back(inSpace->position());
    });
    return points;
}

std::string Sheet::form(Handle handle) {
    const double radius = radiusOf(drawing().live(drawing().find(handle)));
    return joined(points(handle)) + (radius > 0 ? " r" + shortened(radius) : "");
}

std::string Sheet::forms(const std::vector<Handle>& handles) {
    std::string all;
    for (const Handle each : handles) all += (all.empty() ? "" : "; ") + form(each);
    return all;
}

std::string Sheet::drawn() {
    std::string all;
    drawing().forEachInModelSpace([&](db::Record* record) {
        if (!record->has(db::Record::isNew) || record->has(db::Record::erased)) return;
        const int colour = drawing().liveEntity(record)->colorIndex();
        all += (all.empty() ? "" : "; ") + std::string{record->kind == db::Kind::line ? "line " : "circle "} +
               form(record->handle) + (colour == 256 ? "" : " c" + std::to_string(colour));
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
