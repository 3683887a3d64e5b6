// Memory that grows in one direction and goes away as a whole: what the log of one undo step is kept in.
#pragma once

#include "os/memory.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace qx::db {

class StepMemory {
public:
    struct FreePages {
        void operator()(std::byte* memory) const { os::freePages(memory); }
    };
    struct Block {
        std::unique_ptr<std::byte, FreePages> memory;
        std::size_t size = 0, used = 0;
    };

    /// Room for so many bytes, a multiple of 8, behind what was taken last or in a new block. It never moves.
    std::byte* take(std::size_t bytes) {
        if (blocks_.empty() || bytes > blocks_.back().size - blocks_.back().used) grow(bytes);
        Block& block = blocks_.back();
        block.used += bytes;
        return block.memory.get() + (block.used - bytes);
    }

    const std::vector<Block>& blocks() const { return blocks_; }

private:
    // Blocks double, so that a small step stays small and a large one takes few of them.
    void grow(std::size_t least) {
        constexpr std::size_t smallest = std::size_t{1} << 12, largest = std::size_t{1} << 23;
        const std::size_t size = blocks_.empty() ? smallest : std::min(2 * blocks_.back().size, largest);
        Block& block = blocks_.emplace_back();
        block.size = std::max(size, least);
        block.memory.reset(static_cast<std::byte*>(os::allocatePages(block.size)));
    }

    std::vector<Block> blocks_;
};

} // namespace qx::db
