// Cuts typed text into the answers that prompts get. A space or a line end ends an answer and is Enter where
// no answer stands before it; a parenthesised form or a quoted string is one answer, spaces and all; a line
// that begins with a semicolon is skipped; ^C (or the control character 3) cancels and needs nothing behind
// it.
#pragma once

#include "ed/InputSource.h"

#include <string>
#include <string_view>

namespace qx::ed {

/// The text that is cut into this answer again, line end included. A quoted text must not hold what ends it.
QX_HOST_API std::string scriptOf(const Input& input);

class QX_HOST_API Tokenizer {
public:
    explicit Tokenizer(std::string text = {});

    /// The next answer; of kind end when the text is used up. Text that runs into the end is unfinished.
    Input next();
    bool isAtEnd() const { return at_ >= text_.size(); }
    /// More text, as if it had been there from the beginning.
    void append(std::string_view text);
    void clear();

private:
    Input answer(Input::Kind kind, std::string text = {}) const;
    void skipComments();
    bool takeCancel();
    bool takeLineEnd();
    bool takeTerminator();
    std::string takeForm();
    Input readText();
    Input readQuoted();

    std::string text_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
    std::size_t startLine_ = 1;
};

} // namespace qx::ed
