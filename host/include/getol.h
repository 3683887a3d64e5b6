// How far apart two points or two vectors may be and still count as equal. Distances are in drawing units for
// points; vectors are compared as they are, directions after they were made unit vectors.
#pragma once

class AcGeTol {
public:
    constexpr AcGeTol() = default;

    constexpr double equalPoint() const { return equalPoint_; }
    constexpr double equalVector() const { return equalVector_; }
    void setEqualPoint(double tolerance) { equalPoint_ = tolerance; }
    void setEqualVector(double tolerance) { equalVector_ = tolerance; }

private:
    double equalPoint_ = 1e-10;
    double equalVector_ = 1e-12;
};
