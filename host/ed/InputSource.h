// Where the editor's input comes from: a script, a terminal, a window. A source yields one token per prompt;
// a space or a line end has ended it, so that Enter alone is an empty token of its own.
#pragma once

#include "qxexport.h"

#include <cstddef>
#include <string>

namespace qx::ed {

/// What a prompt asks for.
enum class Ask { command, selection, entity, point, real, keyword, text };

struct Input {
    enum class Kind {
        text,
        enter,
        cancel,
        unfinished, ///< text at the end of the source that no space or line end has ended
        end         ///< nothing more will come
    };
    Kind kind = Kind::end;
    std::string text; ///< without the quotes of a quoted string
    bool quoted = false;
    bool shown = false;   ///< typed at a terminal that has shown it, line end included
    std::size_t line = 0; ///< 1-based line of the source on which it began

    friend bool operator==(const Input&, const Input&) = default;
};

class QX_HOST_API InputSource {
public:
    virtual ~InputSource() = default;

    /// The next token. Waits for a person when there is one.
    virtual Input next(Ask ask) = 0;
    /// True when a person answers, who is asked again after a refused answer; a refused answer ends a script.
    virtual bool isInteractive() const = 0;
    /// True when it may end anywhere, which cancels the running command; otherwise an end inside a command
    /// fails the source.
    virtual bool mayEndAnywhere() const { return isInteractive(); }
    /// Names the source in sentences.
    virtual std::string name() const = 0;
};

} // namespace qx::ed
