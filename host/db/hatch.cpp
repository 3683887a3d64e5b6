#include "dbhatch.h"

#include "db/Drawing.h"
#include "db/FieldTable.h"
#include "db/GroupWalk.h"
#include "db/splineGroups.h"
#include "ge/OcsFrame.h"
#include "shape/PolylinePen.h"
#include "shape/arcs.h"

#include <cstddef>
#include <numbers>

using qx::db::FieldTable;
using qx::db::GroupValue;
using qx::db::GroupValues;
using qx::db::Role;
using qx::ge::OcsFrame;

ACRX_DEFINE_MEMBERS(AcDbHatch, AcDbEntity, L"HATCH")

namespace {

using qx::db::GroupGrammar;
using qx::db::ListedGroup;

constexpr double degree = std::numbers::pi / 180;
constexpr const char* marker = "AcDbHatch";

enum PathFlag { isPolyline = 2 };
enum EdgeType { lineEdge = 1, arcEdge = 2, ellipseEdge = 3, splineEdge = 4 };
enum Code : int {
    vertex = 10,
    otherEnd = 11,
    size = 40,
    bulge = 42,
    startAngle = 50,
    endAngle = 51,
    edgeType = 72,
    isCounterClockwise = 73,
    style = 75,
    patternType = 76,
    numberOfPaths = 91,
    pathFlags = 92,
    numberOfEdges = 93,
    splineDegree = 94,
    seeds = 98,
    gradient = 450
};
constexpr qx::db::SplineCodes splineCodes{40, 42, 10};

// ---- what the groups mean where

constexpr ListedGroup beforePaths[] = {{pathFlags, Role::plain}};
constexpr ListedGroup polylinePath[] = {
    {pathFlags, Role::plain}, {vertex, Role::flatPoint}, {bulge, Role::plain}};
constexpr ListedGroup edgePath[] = {{pathFlags, Role::plain}, {edgeType, Role::plain}};
constexpr ListedGroup lineGroups[] = {{pathFlags, Role::plain},
                                      {edgeType, Role::plain},
                                      {vertex, Role::flatPoint},
                                      {otherEnd, Role::flatPoint}};
constexpr ListedGroup arcGroups[] = {{pathFlags, Role::plain},         {edgeType, Role::plain},
                                     {vertex, Role::flatPoint},        {size, Role::length},
                                     {startAngle, Role::arcDegrees},   {endAngle, Role::arcDegrees},
                                     {isCounterClockwise, Role::plain}};
constexpr ListedGroup ellipseGroups[] = {{pathFlags, Role::plain},  {edgeType, Role::plain},
                                         {vertex, Role::flatPoint}, {otherEnd, Role::flatVector},
                                         {size, Role::plain},       {startAngle, Role::plain},
                                         {endAngle, Role::plain},   {isCounterClockwise, Role::plain}};
constexpr ListedGroup splineGroups[] = {
    {pathFlags, Role::plain},    {edgeType, Role::plain}, {splineDegree, Role::plain},
    {vertex, Role::flatPoint},   {size, Role::plain},     {bulge, Role::plain},
    {otherEnd, Role::flatPoint}, {12, Role::flatVector},  {13, Role::flatVector}};
constexpr ListedGroup patternGroups[] = {
    {style, Role::plain},     {patternType, Role::plain}, {52, Role::angleDegrees},  {41, Role::length},
    {53, Role::angleDegrees}, {43, Role::flatPoint, 1},   {45, Role::flatVector, 1}, {49, Role::length}};
constexpr ListedGroup seedGroups[] = {{seeds, Role::plain}, {vertex, Role::flatPoint}};
constexpr ListedGroup gradientGroups[] = {{gradient, Role::plain}, {460, Role::angleRadians}};

GroupGrammar::Groups edgeGroups(std::string_view type) {
    switch (qx::db::toInteger(type).value_or(0)) {
    case lineEdge:
        return lineGroups;
    case arcEdge:
        return arcGroups;
    case ellipseEdge:
        return ellipseGroups;
    case splineEdge:
        return splineGroups;
    default:
        return edgePath;
    }
}

bool isPolylinePath(std::string_view flags) { return qx::db::toInteger(flags).value_or(0) & isPolyline; }

/// Whether what follows is the hatch's own, by its marker or by the number of its paths.
bool beginsHatch(const qx::dxf::Tag& tag) {
    return tag.code == numberOfPaths || (tag.code == 100 && qx::dxf::trimmed(tag.value) == marker);
}

// What all entities have may use the same codes before. A polyline uses the code of an edge's type for
// something else.
GroupGrammar::Groups groupsFrom(GroupGrammar::Groups now, const qx::dxf::Tag& tag) {
    if (now.empty()) return beginsHatch(tag) ? GroupGrammar::Groups{beforePaths} : now;
    switch (tag.code) {
    case pathFlags:
        return isPolylinePath(tag.value) ? GroupGrammar::Groups{polylinePath} : edgePath;
    case edgeType:
        return now.data() == beforePaths || now.data() == polylinePath ? now : edgeGroups(tag.value);
    case style:
    case patternType:
        return patternGroups;
    case seeds:
        return seedGroups;
    case gradient:
        return gradientGroups;
    default:
        return now;
    }
}

// Every path says how many edges it has, and nothing else does.
std::string faultOfPaths(std::string_view bytes, const qx::db::GroupList& list) {
    const bool hasMore = list.values.empty() && qx::db::presentGroups(bytes, {numberOfEdges, seeds}) != 0;
    return hasMore ? "the hatch does not say where its boundary begins (91)" : "";
}

// ---- boundary paths

bool endsPaths(int code) { return code == style || code == patternType || code == seeds || code == gradient; }

GroupValues pathsOf(const qx::db::GroupList& list) {
    std::size_t count = 0;
    while (count < list.values.size() && !endsPaths(list.values[count].code)) ++count;
    return {list.values.data(), count};
}

/// Calls `visit` with each stretch of values that begins with the code; what stands before the first is left
/// out.
template <class Visit> void forEachPart(GroupValues values, int code, Visit&& visit) {
    while (!values.empty()) {
        std::size_t end = 1;
        while (end < values.size() && values[end].code != code) ++end;
        if (values.front().code == code) visit(values.first(end));
        values = values.subspan(end);
    }
}

/// 0 for what is none of the small numbers that types, flags and degrees are.
int toType(double value) { return value >= 0 && value < 1e6 ? static_cast<int>(value) : 0; }

int typeOf(GroupValues part) { return toType(part.front().value.x); }

const GroupValue* find(GroupValues edge, int code) { return qx::db::ValuesOf{edge, code}.next(); }

AcGePoint3d pointOf(GroupValues edge, int code) {
    const GroupValue* found = find(edge, code);
    return found ? found->value : AcGePoint3d{};
}

double numberOf(GroupValues edge, int code, double fallback = 0) {
    const GroupValue* found = find(edge, code);
    return found ? found->value.x : fallback;
}

bool isClockwise(GroupValues edge) { return numberOf(edge, isCounterClockwise, 1) == 0; }

int degreeOf(GroupValues edge) { return toType(numberOf(edge, splineDegree)); }

template <class Visit> void forEachEdge(const qx::db::GroupList& list, Visit&& visit) {
    forEachPart(pathsOf(list), pathFlags, [&](GroupValues path) {
        if (!(typeOf(path) & isPolyline)) forEachPart(path.subspan(1), edgeType, visit);
    });
}

/// Draws paths in their plane.
class PathPen {
public:
    PathPen(const AcGeVector3d& normal, double elevation, qx::shape::Sink& sink)
        : frame_{normal}, elevation_{elevation}, sink_{sink} {}

    void path(GroupValues path) const {
        if (typeOf(path) & isPolyline)
            polyline(path);
        else
            forEachPart(path.subspan(1), edgeType, [&](GroupValues each) { edge(each); });
    }

private:
    AcGePoint3d toWorld(const AcGePoint3d& p) const {
        return frame_.toWorld(AcGePoint3d{p.x, p.y, elevation_});
    }

    void polyline(GroupValues path) const {
        qx::shape::PolylinePen pen{sink_, frame_.z, true};
        const GroupValue* last = nullptr;
        double lastBulge = 0;
        const auto drawLast = [&] {
            if (last) pen.vertex(toWorld(last->value), lastBulge);
        };
        for (const GroupValue& each : path) {
            if (each.code == bulge) lastBulge = each.value.x;
            if (each.code != vertex) continue;
            drawLast();
            last = &each;
            lastBulge = 0;
        }
        drawLast();
        pen.finish();
    }

    void edge(GroupValues edge) const {
        switch (typeOf(edge)) {
        case lineEdge:
            return sink_.segment({toWorld(pointOf(edge, vertex)), toWorld(pointOf(edge, otherEnd))});
        case arcEdge: {
            const double radius = numberOf(edge, size);
            return ellipse(edge, frame_.x * radius, 1);
        }
        case ellipseEdge:
            return ellipse(edge, frame_.toWorld(pointOf(edge, otherEnd).asVector()), numberOf(edge, size, 1));
        case splineEdge:
            return drawSpline(
                edge, splineCodes, degreeOf(edge), [&](const AcGePoint3d& p) { return toWorld(p); }, sink_);
        }
    }

    // Clockwise ones count their angles that way as well.
    void ellipse(GroupValues edge, const AcGeVector3d& major, double ratio) const {
        const double factor = ratio > 0 ? 1 / ratio : 1;
        const double start = qx::ge::withTangentTimes(factor, numberOf(edge, startAngle) * degree);
        const double end = qx::ge::withTangentTimes(factor, numberOf(edge, endAngle) * degree);
        const double sweep = qx::shape::sweepBetween(start, end);
        const AcGeVector3d minor = frame_.z.crossProduct(major) * ratio;
        sink_.arc(qx::shape::ellipticArc(toWorld(pointOf(edge, vertex)), major,
                                         isClockwise(edge) ? -minor : minor, start, sweep));
    }

    OcsFrame frame_;
    double elevation_;
    qx::shape::Sink& sink_;
};

} // namespace

const FieldTable& AcDbHatch::table() {
    static const qx::db::ListedGroups lists{offsetof(Data, groups), {{}, groupsFrom}};
    static const FieldTable fields =
        FieldTable::ofEntity(offsetof(Data, groups),
                             {
                                 {Role::subclass, 100, 0, 0, marker},
                                 {Role::plain, 10, offsetof(Data, x)},
                                 {Role::plain, 20, offsetof(Data, y)},
                                 {Role::elevation, 30, offsetof(Data, elevation)},
                                 {Role::normal, 210, offsetof(Data, normal)},
                             },
                             nullptr, &lists);
    return fields;
}

bool AcDbHatch::afterReading(const qx::db::Drawing& drawing) {
    std::string fault = faultOfPaths(drawing.bytesOf(objectId().record()), data_.groups);
    forEachEdge(data_.groups, [&](GroupValues edge) {
        if (typeOf(edge) == splineEdge && fault.empty())
            if (const auto found = splineFault(edge, splineCodes, degreeOf(edge)); !found.empty())
                fault = "a spline in the hatch's boundary " + found;
        if (typeOf(edge) != arcEdge || !isClockwise(edge)) return;
        for (const GroupValue& each : edge)
            if (each.role == Role::arcDegrees)
                data_.groups.values[static_cast<std::size_t>(&each - data_.groups.values.data())].role =
                    Role::clockwiseDegrees;
    });
    if (!fault.empty()) drawing.addUnusable(objectId().record(), fault);
    return fault.empty();
}

int AcDbHatch::numLoops() const { return static_cast<int>(countOf(pathsOf(data_.groups), pathFlags)); }

void AcDbHatch::shape(qx::shape::Sink& sink) const {
    const PathPen pen{data_.normal, data_.elevation, sink};
    forEachPart(pathsOf(data_.groups), pathFlags, [&](GroupValues path) { pen.path(path); });
}
