// Input from a script: a text, read from beginning to end. Nobody answers a question twice: a refused answer
// fails the script.
#pragma once

#include "ed/Tokenizer.h"

namespace qx::ed {

class ScriptSource : public InputSource {
public:
    ScriptSource(std::string text, std::string name) : tokens_{std::move(text)}, name_{std::move(name)} {}

    Input next(Ask) override {
        Input input = tokens_.next();
        // The end of the script ends its last line, with or without a line feed.
        if (input.kind == Input::Kind::unfinished) input.kind = Input::Kind::text;
        return input;
    }
    bool isInteractive() const override { return false; }
    std::string name() const override { return name_; }

private:
    Tokenizer tokens_;
    std::string name_;
};

} // namespace qx::ed
