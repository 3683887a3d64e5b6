// Works modal dialogs in a person's place. Each step is taken when the dialog has nothing left to do; what is
// typed and pressed comes as posted messages, as from a keyboard. A dialog that is still open after the last
// step is cancelled, and one that hangs ends the program.
#pragma once

#include <atomic>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <thread>
#include <windows.h>

namespace qx::tests {

class DialogScript {
public:
    DialogScript();
    /// A failed check when steps are left: then no dialog came for them; and when a dialog was still open
    /// after the last step.
    ~DialogScript();

    using Step = std::function<void(HWND dialog)>;
    DialogScript& look(Step step);

    DialogScript& type(int control, std::wstring_view characters);
    /// A key that gives no character, to the control that has the focus.
    DialogScript& press(WORD virtualKey);
    DialogScript& focus(int control);
    DialogScript& select(int control, int first, int behind);
    DialogScript& paste(int control, std::wstring text);
    DialogScript& click(int control);
    /// With the mouse, the second time as fast as a double click.
    DialogScript& clickTwice(int control);
    DialogScript& closeBox();

private:
    bool takeStep(HWND dialog);

    std::deque<Step> steps_;
    bool wasCancelled_ = false;
    std::atomic<bool> isOver_{false};
    std::thread watchdog_;
};

std::wstring textOf(HWND dialog, int control);
bool isChecked(HWND dialog, int control);
bool isEnabled(HWND dialog, int control);

} // namespace qx::tests
