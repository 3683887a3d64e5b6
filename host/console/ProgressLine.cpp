#include "console/ProgressLine.h"

#include <cstdio>
#include <string>

namespace qx::console {

void ProgressLine::show(std::string_view job, std::uint64_t done, std::uint64_t total) {
    if (total > 0 && done >= total) return clear();
    const auto now = Clock::now();
    if (now < next_) return;
    next_ = now + std::chrono::milliseconds{200};
    std::string text = "\r\x1B[K" + std::string{job} + ' ';
    text += total > 0 ? std::to_string(done * 100 / total) + " %" : std::to_string(done);
    std::fwrite(text.data(), 1, text.size(), stderr);
    isShown_ = true;
}

void ProgressLine::clear() {
    if (!isShown_) return;
    std::fputs("\r\x1B[K", stderr);
    isShown_ = false;
    next_ = Clock::now() + std::chrono::milliseconds{300};
}

} // namespace qx::console
