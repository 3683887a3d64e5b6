// Splines in lists of values, as the classes that hold such a list draw them.
#pragma once

#include "qxgroups.h"
#include "shape/Spline.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string>

namespace qx::db {

using GroupValues = std::span<const GroupValue>;

/// The values of one group among the others, one after the other.
class ValuesOf {
public:
    ValuesOf(GroupValues values, int code) : rest_{values}, code_{code} {}

    /// Null behind the last one.
    const GroupValue* next() {
        while (!rest_.empty()) {
            const GroupValue& first = rest_.front();
            rest_ = rest_.subspan(1);
            if (first.code == code_) return &first;
        }
        return nullptr;
    }

private:
    GroupValues rest_;
    int code_;
};

std::size_t countOf(GroupValues values, int code);

/// The groups of a B-spline: knots, weights, control points.
struct SplineCodes {
    int knot, weight, point;
};

/// What keeps the numbers from being used, as "makes no curve": they need knots that don't fall and span
/// something, weights above zero (and not worlds apart) for all points or none, a degree from 1 to 25. Empty
/// when they can be used.
std::string splineFault(GroupValues values, const SplineCodes& codes, int degree);

/// Of values without a fault. `toWorld` is applied to the points.
template <class ToWorld>
void drawSpline(GroupValues values, const SplineCodes& codes, int degree, ToWorld&& toWorld,
                shape::Sink& sink) {
    ValuesOf knots{values, codes.knot}, weights{values, codes.weight}, points{values, codes.point};
    const auto nextPoint = [&] {
        const GroupValue* weight = weights.next();
        return shape::WeightedPoint{toWorld(points.next()->value), weight ? weight->value.x : 1};
    };
    const auto nextKnot = [&] { return knots.next()->value.x; };
    shape::drawSpline(degree, countOf(values, codes.point), nextKnot, nextPoint, sink);
}

/// Computes the curve through the points of that group: puts its derivatives at the end of the list, where
/// they turn and scale with the points.
void addDerivatives(GroupList& list, int pointCode, const shape::Ends& ends);

/// The curve through the points of that group, whose derivatives were computed.
void drawThroughPoints(GroupValues values, int pointCode, bool isClosed, shape::Sink& sink);

} // namespace qx::db
