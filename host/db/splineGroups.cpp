#include "db/splineGroups.h"

#include "db/FieldTable.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qx::db {

namespace {

constexpr int computed = 0; // the code of values that the file does not have

bool areKnots(ValuesOf knots, std::size_t first, std::size_t last) {
    double before = -std::numeric_limits<double>::infinity(), start = 0;
    for (std::size_t i = 0; const GroupValue* each = knots.next(); ++i) {
        if (each->value.x < before) return false;
        before = each->value.x;
        if (i == first) start = before;
        if (i == last && !(std::isfinite(before - start) && before > start)) return false;
    }
    return true;
}

bool areWeights(ValuesOf weights) {
    constexpr double mostApart = 1e9;
    double least = std::numeric_limits<double>::infinity(), most = 0;
    while (const GroupValue* each = weights.next()) {
        least = std::min(least, each->value.x);
        most = std::max(most, each->value.x);
    }
    return least > 0 && most / least <= mostApart;
}

} // namespace

std::size_t countOf(GroupValues values, int code) {
    return static_cast<std::size_t>(std::ranges::count(values, code, &GroupValue::code));
}

namespace {

bool isSpline(GroupValues values, const SplineCodes& codes, int degree) {
    if (degree < 1) return false;
    const auto order = static_cast<std::size_t>(degree) + 1;
    const std::size_t points = countOf(values, codes.point), weights = countOf(values, codes.weight);
    if (points < order || countOf(values, codes.knot) != points + order) return false;
    if (weights != 0 && weights != points) return false;
    return areKnots({values, codes.knot}, order - 1, points) &&
           (weights == 0 || areWeights({values, codes.weight}));
}

} // namespace

std::string splineFault(GroupValues values, const SplineCodes& codes, int degree) {
    if (!isSpline(values, codes, degree)) return "makes no curve of its knots, weights and control points";
    if (degree <= shape::Bezier::mostDegree) return {};
    return "is of degree " + std::to_string(degree) + ", higher than " +
           std::to_string(shape::Bezier::mostDegree);
}

void addDerivatives(GroupList& list, int pointCode, const shape::Ends& ends) {
    std::vector<AcGePoint3d> points;
    for (const GroupValue& each : list.values)
        if (each.code == pointCode) points.push_back(each.value);
    for (const AcGeVector3d& each : shape::derivativesThrough(points, ends))
        list.values.push_back({AcGePoint3d::kOrigin + each, Role::vector, computed});
}

void drawThroughPoints(GroupValues values, int pointCode, bool isClosed, shape::Sink& sink) {
    shape::drawThrough(
        [&](auto&& visit) {
            ValuesOf points{values, pointCode}, derivatives{values, computed};
            const GroupValue *firstPoint = nullptr, *firstDerivative = nullptr;
            while (const GroupValue* point = points.next()) {
                const GroupValue* derivative = derivatives.next();
                if (!firstPoint) firstPoint = point, firstDerivative = derivative;
                visit(point->value, derivative->value.asVector());
            }
            if (isClosed && firstPoint) visit(firstPoint->value, firstDerivative->value.asVector());
        },
        sink);
}

} // namespace qx::db
