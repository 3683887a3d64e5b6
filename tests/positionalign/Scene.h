// A drawing that all actions are tried on: boxes at different heights, two groups and an object in none.
#pragma once

#include "tests/positionalign/Boxes.h"

namespace qx::tests {
using namespace drawings;

/// Groups: AB holds a and b; C holds c. d is in no group.
struct Scene {
    DrawingText content;
    const Handle a = content.line({10, 20, 3}, {30, 50, 7});
    const Handle b = content.line({-5, 0, 0}, {5, 8, 0});
    const Handle c = content.line({100, 100, -2}, {140, 110, -2});
    const Handle d = content.line({0, 0, 5}, {1, 1, 5});
    const Handle groupAB = content.group("AB", {a, b});
    const Handle groupC = content.group("C", {c});
    const std::vector<Item> items{{a}, {b}, {c}, {d}};
};

} // namespace qx::tests
