// One line on standard error that says how far a long job is. It appears only after a moment, changes a few
// times a second, and is wiped away at the end.
#pragma once

#include <chrono>
#include <cstdint>
#include <string_view>

namespace qx::console {

class ProgressLine {
public:
    ProgressLine() = default;
    ~ProgressLine() { clear(); }
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// `total` is 0 when nobody knows it.
    void show(std::string_view job, std::uint64_t done, std::uint64_t total);
    void clear();

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point next_ = Clock::now() + std::chrono::milliseconds{300};
    bool isShown_ = false;
};

} // namespace qx::console
