// What a reader noticed about a drawing and did not refuse it for.
#pragma once

#include <cstddef>
#include <string>

namespace qx::db {
struct Finding {
    std::size_t line = 0; ///< 1-based line in the file; 0 when it concerns the whole file
    std::string sentence;
    friend bool operator==(const Finding&, const Finding&) = default;
};

/// Beyond text::longestShown bytes.
constexpr const char* longTextSentence = "the text is longer than 1 MiB; only its beginning is shown";
} // namespace qx::db
