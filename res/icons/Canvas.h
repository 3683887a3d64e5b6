// A square of pixels to draw an icon on. Coordinates are pixels, x to the right, y down; pixel edges are at
// whole numbers, so that what ends there comes out crisp. Everything else is antialiased. The same bytes on
// every machine.
#pragma once

#include <cstdint>
#include <vector>

namespace qx::icons {

struct Point {
    double x, y;
};

struct Colour {
    std::uint8_t red, green, blue;
};

/// As icon files keep it: alpha is not multiplied in.
struct Pixel {
    std::uint8_t blue, green, red, alpha;
};

class Canvas {
public:
    /// Transparent.
    explicit Canvas(int size) : size_{size}, layers_(static_cast<std::size_t>(size) * size_) {}

    int size() const { return size_; }
    /// Transparent black where nothing was drawn.
    Pixel at(int x, int y) const;

    /// Lays a shape over what is there. A shape is anything with contains(Point).
    template <typename Shape> void fill(const Shape& shape, Colour colour) {
        for (int y = 0; y < size_; ++y)
            for (int x = 0; x < size_; ++x) cover(x, y, coverage(shape, x, y), colour);
    }

private:
    /// Colours here are multiplied by alpha, so that layers can be added up.
    struct Layers {
        double red = 0, green = 0, blue = 0, alpha = 0;
    };
    static constexpr int samples = 16; ///< per pixel, in each direction

    template <typename Shape> static double coverage(const Shape& shape, int x, int y) {
        int inside = 0;
        for (int row = 0; row < samples; ++row)
            for (int column = 0; column < samples; ++column)
                inside += shape.contains({x + (column + 0.5) / samples, y + (row + 0.5) / samples});
        return inside / static_cast<double>(samples * samples);
    }
    void cover(int x, int y, double share, Colour colour);
    std::size_t index(int x, int y) const { return static_cast<std::size_t>(y * size_ + x); }

    int size_;
    std::vector<Layers> layers_;
};

} // namespace qx::icons
