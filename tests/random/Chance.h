// Seeded choices for random drawings and answers: numbers as drawings have them, often round, often one that
// was used before, and angles around those where the alignments decide which way to turn.
#pragma once

#include "shape/randomShapes.h"

#include <string>
#include <vector>

namespace qx::tests {

/// With all its digits.
std::string decimal(double value);

class Chance : public shapes::Random {
public:
    explicit Chance(unsigned seed);

    std::size_t below(std::size_t n) { return static_cast<std::size_t>(number(0, static_cast<double>(n))); }
    template <class List> const auto& oneOf(const List& list) { return list[below(std::size(list))]; }
    double coordinate();
    /// Mostly at height 0.
    AcGePoint3d place();
    /// Radians.
    double angle();
    /// Positive.
    double length();
    /// In the plane, mostly.
    AcGeVector3d direction();

private:
    double scale_; ///< of the drawing
    std::vector<double> used_;
};

} // namespace qx::tests
