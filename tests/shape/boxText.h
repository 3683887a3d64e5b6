// Boxes and points as lines of text, for tables of cases.
#pragma once

#include "shape/Primitives.h"

#include <cmath>
#include <cstdio>
#include <string>

namespace shapes {

/// "1..3 2..3 0..0", or "empty".
inline std::string text(const qx::shape::Box& box) {
    if (box.isEmpty()) return "empty";
    char line[200];
    const auto rounded = [](double d) { return std::abs(d) < 1e-9 ? 0.0 : d; };
    std::snprintf(line, sizeof line, "%.6g..%.6g %.6g..%.6g %.6g..%.6g", rounded(box.min.x),
                  rounded(box.max.x), rounded(box.min.y), rounded(box.max.y), rounded(box.min.z),
                  rounded(box.max.z));
    return line;
}

/// "1,2" or "1,2,3", each with a blank behind it.
template <class Points> std::string pointsText(const Points& points) {
    std::string all;
    for (const AcGePoint3d& p : points) {
        char point[100];
        const auto rounded = [](double d) { return std::round(d * 1e6) / 1e6 + 0.0; };
        std::snprintf(point, sizeof point, rounded(p.z) == 0 ? "%.9g,%.9g " : "%.9g,%.9g,%.9g ", rounded(p.x),
                      rounded(p.y), rounded(p.z));
        all += point;
    }
    return all;
}

} // namespace shapes
