// A box as a line of text, for tables of cases.
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

} // namespace shapes
