#include "shape/Spline.h"

#include <algorithm>

namespace qx::shape {

void SplineSpan::addKnot(double knot) {
    const auto end = knots_.begin() + static_cast<std::ptrdiff_t>(2 * degree_);
    std::shift_left(knots_.begin(), end, 1);
    end[-1] = knot;
}

void SplineSpan::addPoint(const WeightedPoint& point) {
    const auto end = points_.begin() + static_cast<std::ptrdiff_t>(degree_ + 1);
    std::shift_left(points_.begin(), end, 1);
    end[-1] = point;
}

// A control point is the value of the span's polar form at neighbouring knots (Ramshaw, 1987). First the
// knots before the span are replaced by its start, one more in each round, then those behind it by its end:
// what is left are the values at start and end only, which a Bézier curve has for its control points.
Bezier SplineSpan::bezier() const {
    Bezier curve;
    curve.degree = static_cast<int>(degree_);
    auto& points = curve.points;
    points = points_;
    const double start = knots_[degree_ - 1], end = knots_[degree_];
    for (std::size_t round = 1; round < degree_; ++round)
        for (std::size_t i = 0; i + round < degree_; ++i) {
            const double low = knots_[i + round - 1], high = knots_[i + degree_];
            points[i] = between(points[i], points[i + 1], (start - low) / (high - low));
        }
    for (std::size_t round = 1; round < degree_; ++round)
        for (std::size_t i = degree_; i > round; --i) {
            const double high = knots_[degree_ + i - round];
            points[i] = between(points[i - 1], points[i], (end - start) / (high - start));
        }
    return curve;
}

// ---- through points

namespace {

/// A row of a system of equations: before x[i-1] + at x[i] + after x[i+1] = vector, or = corner.
struct Row {
    double before, at, after;
    AcGeVector3d vector;
    double corner = 0;
};

/// Solves for both right sides, which the solutions then stand in (Thomas).
void solve(std::vector<Row>& rows) {
    for (std::size_t i = 1; i < rows.size(); ++i) {
        const double factor = rows[i].before / rows[i - 1].at;
        rows[i].at -= factor * rows[i - 1].after;
        rows[i].vector -= rows[i - 1].vector * factor;
        rows[i].corner -= rows[i - 1].corner * factor;
    }
    for (std::size_t i = rows.size(); i-- > 0;) {
        if (i + 1 < rows.size()) {
            rows[i].vector -= rows[i + 1].vector * rows[i].after;
            rows[i].corner -= rows[i + 1].corner * rows[i].after;
        }
        rows[i].vector = rows[i].vector / rows[i].at;
        rows[i].corner /= rows[i].at;
    }
}

// The first row depends on the last unknown, the last one on the first: what these add is a matrix of rank
// one (Sherman and Morrison, 1950).
void solveRing(std::vector<Row>& rows) {
    const double atEnd = rows.front().before, atStart = rows.back().after, shifted = -rows.front().at;
    rows.front().at -= shifted;
    rows.back().at -= atStart * atEnd / shifted;
    rows.front().corner = shifted;
    rows.back().corner = atStart;
    solve(rows);
    const double ratio = atEnd / shifted;
    const AcGeVector3d vector = rows.front().vector + rows.back().vector * ratio;
    const double corner = rows.front().corner + rows.back().corner * ratio;
    for (Row& each : rows) each.vector -= vector * (each.corner / (1 + corner));
}

/// The condition of continuous curvature at `at`.
Row joint(const AcGePoint3d& before, const AcGePoint3d& at, const AcGePoint3d& after) {
    const AcGeVector3d in = at - before, out = after - at;
    const double a = in.length(), b = out.length();
    return {b, 2 * (a + b), a, (in * (b / a) + out * (a / b)) * 3};
}

/// The condition at an end, `way` leading along the curve to or from its neighbour.
Row endRow(const AcGeVector3d& direction, const AcGeVector3d& way) {
    if (direction.length() > 0) return {0, 1, 0, direction.normal()};
    return {1, 2, 1, way * (3 / way.length())};
}

std::vector<Row> rowsOf(const std::vector<AcGePoint3d>& points, const Ends& ends) {
    std::vector<Row> rows;
    const std::size_t count = points.size(), last = count - 1;
    for (std::size_t i = 0; i < count; ++i) {
        if (!ends.isClosed && i == 0)
            rows.push_back(endRow(ends.start, points[1] - points[0]));
        else if (!ends.isClosed && i == last)
            rows.push_back(endRow(ends.end, points[last] - points[last - 1]));
        else
            rows.push_back(joint(points[(i + last) % count], points[i], points[(i + 1) % count]));
    }
    return rows;
}

} // namespace

std::vector<AcGeVector3d> derivativesThrough(std::span<const AcGePoint3d> points, const Ends& ends) {
    std::vector<AcGePoint3d> distinct;
    std::vector<std::size_t> places;
    const auto isNew = [&](const AcGePoint3d& p) {
        return distinct.empty() || p.distanceTo(distinct.back()) > 0;
    };
    for (const AcGePoint3d& each : points) {
        if (isNew(each)) distinct.push_back(each);
        places.push_back(distinct.size() - 1);
    }
    const bool returns = distinct.size() > 1 && distinct.front().distanceTo(distinct.back()) == 0;
    if (ends.isClosed && returns) distinct.pop_back();
    std::vector<AcGeVector3d> derivatives(points.size());
    if (distinct.size() < (ends.isClosed ? 3 : 2)) return derivatives;

    double length = 0;
    for (std::size_t i = 1; i < points.size(); ++i) length += points[i - 1].distanceTo(points[i]);
    if (ends.isClosed) length += points.back().distanceTo(points.front());
    std::vector<Row> rows = rowsOf(distinct, ends);
    ends.isClosed ? solveRing(rows) : solve(rows);
    for (std::size_t i = 0; i < points.size(); ++i)
        derivatives[i] = rows[places[i] % rows.size()].vector * length;
    return derivatives;
}

} // namespace qx::shape
