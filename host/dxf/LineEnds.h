// Finds the line ends of a stretch of bytes one after the other. Lines are short: the line feeds of 64 bytes
// are found together, and where the next line begins never waits for what the last one says.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace qx::dxf {

class LineEnds {
public:
    LineEnds(const char* begin, const char* end)
        : block_{begin}, end_{end}, lineFeeds_{lineFeedsFrom(begin, end)} {}

    /// The next line feed, or the end.
    const char* next() {
        while (lineFeeds_ == 0) {
            if (end_ - block_ <= blockSize) return end_;
            block_ += blockSize;
            lineFeeds_ = lineFeedsFrom(block_, end_);
        }
        const char* found = block_ + std::countr_zero(lineFeeds_);
        lineFeeds_ &= lineFeeds_ - 1;
        return found;
    }

private:
    static constexpr std::ptrdiff_t blockSize = 64;

    static std::uint64_t lineFeedsFrom(const char* at, const char* end) {
        if (end - at >= blockSize) return lineFeedsOf(at);
        char rest[blockSize] = {};
        std::memcpy(rest, at, static_cast<std::size_t>(end - at));
        return lineFeedsOf(rest);
    }

    /// A bit for each byte of a block.
    static std::uint64_t lineFeedsOf(const char* block) {
        std::uint64_t bits = 0;
#ifdef __SSE2__
        const __m128i lineFeed = _mm_set1_epi8('\n');
        const auto ofQuarter = [&](int i) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block) + i);
            const auto found = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, lineFeed)));
            return static_cast<std::uint64_t>(found) << 16 * i;
        };
        bits = ofQuarter(0) | ofQuarter(1) | ofQuarter(2) | ofQuarter(3);
#else
        for (int i = 0; i < blockSize; ++i) bits |= static_cast<std::uint64_t>(block[i] == '\n') << i;
#endif
        return bits;
    }

    const char* block_;
    const char* end_;
    std::uint64_t lineFeeds_; ///< those of the block that are still to come
};

} // namespace qx::dxf
