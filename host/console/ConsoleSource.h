// A person at a terminal, or whoever is at the other end of a pipe, line by line. Several answers may stand
// in one line. Both are asked again after a refused answer; but what a pipe brings was written beforehand,
// like a script, and must not end inside a command.
#pragma once

#include "ed/Tokenizer.h"

namespace qx::console {

class ConsoleSource : public ed::InputSource {
public:
    enum class From { terminal, pipe };
    /// `echoed`: what is typed shows where the transcript is shown.
    ConsoleSource(From from, bool echoed) : from_{from}, echoed_{echoed} {}

    ed::Input next(ed::Ask ask) override;
    bool isInteractive() const override { return true; }
    bool mayEndAnywhere() const override { return from_ == From::terminal; }
    std::string name() const override { return from_ == From::terminal ? "input" : "stdin"; }

private:
    ed::Tokenizer tokens_;
    From from_;
    bool echoed_;
};

} // namespace qx::console
