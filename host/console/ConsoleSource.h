// A person at a terminal, or whoever is at the other end of a pipe, line by line. Several answers may stand
// in one line.
#pragma once

#include "ed/Tokenizer.h"

namespace qx::console {

class ConsoleSource : public ed::InputSource {
public:
    /// `echoed`: what is typed shows where the transcript is shown.
    explicit ConsoleSource(bool echoed) : echoed_{echoed} {}

    ed::Input next(ed::Ask ask) override;
    bool isInteractive() const override { return true; }
    std::string name() const override { return "input"; }

private:
    ed::Tokenizer tokens_;
    bool echoed_;
};

} // namespace qx::console
