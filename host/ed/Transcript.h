// What the command line shows: prompts, the answers, messages. Keeps track of where the cursor is, so that a
// message that begins with a line feed starts a line of its own without leaving a blank one, and a prompt
// never runs into the text before it. Text is UTF-8; other control characters than line feeds and tabs, which
// names in a drawing may hold, are shown as U+FFFD.
#pragma once

#include "qxexport.h"

#include <functional>
#include <string>
#include <string_view>

namespace qx::ed {

class QX_HOST_API Transcript {
public:
    using Sink = std::function<void(std::string_view)>;
    explicit Transcript(Sink sink) : sink_{std::move(sink)} {}

    /// Text as the programs of the command line print it: no line feed is added, and one at the beginning is
    /// dropped when the cursor is at the start of a line.
    void message(std::string_view text);
    /// A sentence on a line of its own.
    void sentence(std::string_view text);
    /// The same for what belongs to the dialogue itself, such as how many objects an answer has found.
    void remark(std::string_view text);
    /// Begins a line with the prompt and leaves the cursor behind it.
    void prompt(std::string_view text);
    /// The answer behind the prompt, and the line end that finished it; `shown` when the terminal has them
    /// already.
    void answer(std::string_view text, bool shown);

    bool isAtLineStart() const { return atLineStart_; }
    /// Also told of every message and sentence, not of remarks.
    std::function<void(std::string_view)> onMessage;

private:
    void write(std::string_view text);

    Sink sink_;
    bool atLineStart_ = true;
};

} // namespace qx::ed
