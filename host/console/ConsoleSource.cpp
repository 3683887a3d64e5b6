#include "console/ConsoleSource.h"

#include "console/terminalLine.h"

namespace qx::console {

using ed::Input;

ed::Input ConsoleSource::next(ed::Ask) {
    Input input = tokens_.next();
    while (input.kind == Input::Kind::end) {
        std::string line;
        switch (readLine(line)) {
        case LineRead::end:
            return {};
        case LineRead::interrupted:
            return {.kind = Input::Kind::cancel, .text = {}};
        case LineRead::line:
            break;
        }
        tokens_.append(line + '\n');
        input = tokens_.next();
        input.shown = echoed_;
    }
    // A form that was never closed takes the rest of its line.
    if (input.kind == Input::Kind::unfinished) input.kind = Input::Kind::text;
    return input;
}

} // namespace qx::console
