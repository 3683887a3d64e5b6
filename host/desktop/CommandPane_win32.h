// The command line of the window: what was said so far, and a line to type in, with the question that waits
// in front of it. Everything that is typed anywhere goes there; lines that are pasted are entered one by one.
#pragma once

#include "desktop/Desk.h"

#include <string>
#include <string_view>
#include <vector>
#include <windows.h>

namespace qx::desktop {

class CommandPane {
public:
    explicit CommandPane(HWND parent);
    ~CommandPane();
    CommandPane(const CommandPane&) = delete;
    CommandPane& operator=(const CommandPane&) = delete;

    /// Whom what is typed goes to.
    void setDesk(Desk* desk) { desk_ = desk; }
    /// In the line to type in. UTF-8.
    void setTyped(const std::string& text);
    /// UTF-8. A last line without its end is the question that waits.
    void append(std::string_view text);
    void place(const RECT& place);
    int heightFor(int dotsPerInch) const;
    void setDotsPerInch(int dotsPerInch);
    void focus() { ::SetFocus(input_); }
    /// A key that is pressed where one reads goes to where one types, unless it moves through the text or
    /// copies.
    void redirect(MSG& message);
    /// A turn of the wheel over what was said scrolls that; false elsewhere.
    bool scroll(const MSG& message);

private:
    static LRESULT CALLBACK inputProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                           DWORD_PTR pane);
    bool isTaken(UINT message, WPARAM wParam);
    bool isKeyTaken(WPARAM key);
    bool pastesLines();
    std::string typed() const;
    void submit();
    void recall(int step);
    void showPrompt();

    HWND parent_, output_, prompt_, input_;
    HFONT font_ = nullptr;
    Desk* desk_ = nullptr;
    std::string question_;
    std::vector<std::string> lines_; ///< that were typed
    std::size_t recalled_ = 0;
    RECT place_{};
};

} // namespace qx::desktop
