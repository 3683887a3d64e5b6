// What a test has the editor answer that no session gives. A program with these functions of the editor's
// names links them instead of the host's; each does what is staged, and hands all else on to the editor. It
// must export its symbols.
#pragma once

#include "adsdef.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace qx::tests {

/// A point or an object that is asked for.
struct Question {
    std::string prompt;
    const double* base; ///< null without a rubber band
    double* point;      ///< for the answer
};

struct PromptStage {
    /// Answers a question itself with the result, or leaves it to the editor.
    std::function<std::optional<int>(const Question&)> answer;
    /// Told when a question was answered, before the one who asked goes on.
    std::function<void(const Question&)> answered;
    std::optional<int> setLength;   ///< the length of every set
    std::optional<int> unnamed;     ///< a member of every set that has no name
    std::vector<int> highlighted{}; ///< lengths of the sets to be shown as selected; -1 for a second set
};

/// Tests put back what they have set.
extern PromptStage stage;

} // namespace qx::tests
