// Drawings of any size for timing runs. The same options give the same bytes.
//
// The mix goes by index modulo 20, so it is exact for every count divisible by 20: 30 % LINE, 20 % LWPOLYLINE
// of eight vertices (every second one with bulges), 10 % CIRCLE, 10 % ARC, 15 % TEXT (a third of it Chinese),
// 5 % MTEXT, 10 % INSERT. One entity in 50 carries extended data.
#pragma once

#include <cstddef>
#include <string>

namespace qx::bench {

struct DrawingOptions {
    std::size_t count = 0;
    std::size_t groups = 0; ///< spread evenly over the entities; no entity is in two
    std::size_t groupSize = 10;
    std::size_t seed = 1;
    bool crlf = false;
    bool r2000 = false; ///< in GBK instead of UTF-8
};

/// Whether there are entities enough for the groups.
bool fits(const DrawingOptions& options);

/// False when the file could not be written.
bool writeDrawing(const DrawingOptions& options, const std::string& path);

} // namespace qx::bench
