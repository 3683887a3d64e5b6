#include "dbspline.h"

#include "db/Drawing.h"
#include "db/FieldTable.h"
#include "db/GroupWalk.h"
#include "db/PathEnds.h"
#include "db/splineGroups.h"

#include <cstddef>

using qx::db::FieldTable;
using qx::db::Role;

ACRX_DEFINE_MEMBERS(AcDbSpline, AcDbCurve, L"SPLINE")

namespace {

constexpr int fitPoint = 11;
constexpr qx::db::SplineCodes codes{40, 41, 10};
constexpr qx::db::ListedGroup groups[] = {
    {10, Role::worldPoint}, {11, Role::worldPoint}, {40, Role::plain}, {41, Role::plain}};

class EndsSink final : public qx::shape::Sink {
public:
    explicit EndsSink(const AcDbSpline& spline) { spline.shape(*this); }
    void segment(const qx::shape::Segment& segment) override { add(segment.start, segment.end); }
    void arc(const qx::shape::EllipticArc& arc) override { add(arc.start(), arc.end()); }
    void bezier(const qx::shape::Bezier& curve) override { add(curve.start(), curve.end()); }
    void text(const qx::shape::TextRun&) override {}

    qx::db::PathEnds ends;

private:
    void add(const AcGePoint3d& from, const AcGePoint3d& to) {
        ends.add(from);
        ends.add(to);
    }
};

} // namespace

const FieldTable& AcDbSpline::table() {
    static const qx::db::ListedGroups lists{offsetof(Data, groups), {groups}};
    static const FieldTable fields =
        FieldTable::ofEntity(offsetof(Data, groups),
                             {
                                 {Role::subclass, 100, 0, 0, "AcDbSpline"},
                                 {Role::normal, 210, offsetof(Data, normal)},
                                 {Role::integer, 70, offsetof(Data, flags)},
                                 {Role::integer, 71, offsetof(Data, degree), 3},
                                 {Role::direction, 12, offsetof(Data, startTangent)},
                                 {Role::direction, 13, offsetof(Data, endTangent)},
                             },
                             nullptr, &lists);
    return fields;
}

bool AcDbSpline::afterReading(const qx::db::Drawing& drawing) {
    if (numControlPoints() == 0 && numFitPoints() > 0) {
        addDerivatives(data_.groups, fitPoint, {data_.startTangent, data_.endTangent, isClosed()});
        return true;
    }
    const std::string fault = splineFault(data_.groups.values, codes, data_.degree);
    if (!fault.empty()) drawing.addUnusable(objectId().record(), "the spline " + fault);
    return fault.empty();
}

int AcDbSpline::numControlPoints() const {
    return static_cast<int>(countOf(data_.groups.values, codes.point));
}
int AcDbSpline::numFitPoints() const { return static_cast<int>(countOf(data_.groups.values, fitPoint)); }

void AcDbSpline::shape(qx::shape::Sink& sink) const {
    if (numControlPoints() == 0) return drawThroughPoints(data_.groups.values, fitPoint, isClosed(), sink);
    const auto toWorld = [](const AcGePoint3d& point) { return point; };
    drawSpline(data_.groups.values, codes, data_.degree, toWorld, sink);
}

Acad::ErrorStatus AcDbSpline::getStartPoint(AcGePoint3d& point) const {
    return EndsSink{*this}.ends.giveStart(point);
}

Acad::ErrorStatus AcDbSpline::getEndPoint(AcGePoint3d& point) const {
    return EndsSink{*this}.ends.giveEnd(point);
}
