#include "desktop/CommandPane_win32.h"

#include "os/encoding.h"

#include <commctrl.h>

#include <algorithm>
#include <array>

namespace qx::desktop {
namespace {

constexpr int linesShown = 6, pointsOfFont = 9;
constexpr int mostCharacters = 200'000, keptCharacters = 100'000;

HWND made(const wchar_t* kind, DWORD style, HWND parent) {
    return ::CreateWindowExW(0, kind, nullptr, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent, nullptr,
                             ::GetModuleHandleW(nullptr), nullptr);
}

std::wstring withWindowsLineEnds(std::string_view text) {
    std::wstring wide = os::toWide(std::string{text}), result;
    for (const wchar_t each : wide) {
        if (each == L'\n') result += L'\r';
        if (each != L'\r') result += each;
    }
    return result;
}

std::wstring clipboardText(HWND owner) {
    if (!::OpenClipboard(owner)) return {};
    std::wstring text;
    const HANDLE memory = ::GetClipboardData(CF_UNICODETEXT);
    if (const auto* characters = memory ? static_cast<const wchar_t*>(::GlobalLock(memory)) : nullptr) {
        text.assign(characters, ::wcsnlen(characters, ::GlobalSize(memory) / sizeof(wchar_t)));
        ::GlobalUnlock(memory);
    }
    ::CloseClipboard();
    return text;
}

int lineHeight(int dotsPerInch) { return ::MulDiv(pointsOfFont * 2, dotsPerInch, 96); }

} // namespace

CommandPane::CommandPane(HWND parent)
    : parent_{parent}, output_{made(L"EDIT",
                                    WS_VSCROLL | WS_BORDER | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL,
                                    parent)},
      prompt_{made(L"STATIC", SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_CENTERIMAGE, parent)},
      input_{made(L"EDIT", WS_BORDER | ES_AUTOHSCROLL, parent)} {
    ::SendMessageW(output_, EM_SETLIMITTEXT, 0, 0);
    ::SetWindowSubclass(input_, &inputProcedure, 0, reinterpret_cast<DWORD_PTR>(this));
    setDotsPerInch(static_cast<int>(::GetDpiForWindow(parent)));
}

CommandPane::~CommandPane() {
    ::RemoveWindowSubclass(input_, &inputProcedure, 0);
    if (font_) ::DeleteObject(font_);
}

void CommandPane::setDotsPerInch(int dotsPerInch) {
    if (font_) ::DeleteObject(font_);
    font_ = ::CreateFontW(-::MulDiv(pointsOfFont, dotsPerInch, 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                          DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                          DEFAULT_PITCH, L"Microsoft YaHei");
    for (const HWND each : {output_, prompt_, input_})
        ::SendMessageW(each, WM_SETFONT, reinterpret_cast<WPARAM>(font_), TRUE);
}

int CommandPane::heightFor(int dotsPerInch) const { return lineHeight(dotsPerInch) * (linesShown + 1); }

void CommandPane::place(const RECT& place) {
    place_ = place;
    const int width = place.right - place.left;
    const int line = lineHeight(static_cast<int>(::GetDpiForWindow(parent_)));
    ::MoveWindow(output_, place.left, place.top, width, std::max(place.bottom - place.top - line, 0L), TRUE);
    showPrompt();
}

/// The question takes the room that it needs, and leaves half of the line at least.
void CommandPane::showPrompt() {
    const std::wstring question = os::toWide(question_);
    const int width = place_.right - place_.left;
    const int line = lineHeight(static_cast<int>(::GetDpiForWindow(parent_)));
    const HDC context = ::GetDC(prompt_);
    const HGDIOBJ old = ::SelectObject(context, font_);
    SIZE size{};
    ::GetTextExtentPoint32W(context, question.c_str(), static_cast<int>(question.size()), &size);
    ::SelectObject(context, old);
    ::ReleaseDC(prompt_, context);
    const int room = std::min<int>(size.cx + line / 2, width / 2);
    ::SetWindowTextW(prompt_, question.c_str());
    ::MoveWindow(prompt_, place_.left, place_.bottom - line, room, line, TRUE);
    ::MoveWindow(input_, place_.left + room, place_.bottom - line, width - room, line, TRUE);
}

void CommandPane::append(std::string_view text) {
    question_ += text;
    const std::size_t lineEnd = question_.rfind('\n');
    if (lineEnd != std::string::npos) {
        const std::wstring whole = withWindowsLineEnds(std::string_view{question_}.substr(0, lineEnd + 1));
        if (::GetWindowTextLengthW(output_) > mostCharacters) {
            ::SendMessageW(output_, EM_SETSEL, 0, keptCharacters);
            ::SendMessageW(output_, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L""));
        }
        const int end = ::GetWindowTextLengthW(output_);
        ::SendMessageW(output_, EM_SETSEL, static_cast<WPARAM>(end), end);
        ::SendMessageW(output_, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(whole.c_str()));
        question_.erase(0, lineEnd + 1);
    }
    showPrompt();
}

std::string CommandPane::typed() const {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(input_)) + 1, L'\0');
    text.resize(
        static_cast<std::size_t>(::GetWindowTextW(input_, text.data(), static_cast<int>(text.size()))));
    return os::toUtf8(text);
}

void CommandPane::setTyped(const std::string& text) {
    const std::wstring wide = os::toWide(text);
    ::SetWindowTextW(input_, wide.c_str());
    ::SendMessageW(input_, EM_SETSEL, wide.size(), static_cast<LPARAM>(wide.size()));
}

void CommandPane::submit() {
    const std::string text = typed();
    setTyped({});
    if (!text.empty() && (lines_.empty() || lines_.back() != text)) lines_.push_back(text);
    recalled_ = lines_.size();
    if (desk_) desk_->type(text);
}

void CommandPane::recall(int step) {
    const auto wanted = static_cast<std::ptrdiff_t>(recalled_) + step;
    if (wanted < 0 || wanted > static_cast<std::ptrdiff_t>(lines_.size())) return;
    recalled_ = static_cast<std::size_t>(wanted);
    setTyped(recalled_ < lines_.size() ? lines_[recalled_] : std::string{});
}

LRESULT CALLBACK CommandPane::inputProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                             UINT_PTR, DWORD_PTR pane) {
    if (reinterpret_cast<CommandPane*>(pane)->isTaken(message, wParam)) return 0;
    return ::DefSubclassProc(window, message, wParam, lParam);
}

/// What stands behind the last line end waits to be completed. False when there is no line end.
bool CommandPane::pastesLines() {
    std::wstring text = clipboardText(input_);
    std::erase(text, L'\r');
    if (text.find(L'\n') == std::wstring::npos) return false;
    ::SendMessageW(input_, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L""));
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(L'\n', begin), text.size());
        ::SendMessageW(input_, EM_REPLACESEL, TRUE,
                       reinterpret_cast<LPARAM>(text.substr(begin, end - begin).c_str()));
        if (end < text.size()) submit();
        begin = end + 1;
    }
    return true;
}

bool CommandPane::isTaken(UINT message, WPARAM wParam) {
    if (message == WM_PASTE) return pastesLines();
    if (message == WM_KEYDOWN) return isKeyTaken(wParam);
    if (message != WM_CHAR) return false;
    const bool isSpace = wParam == L' ' && desk_ && desk_->spaceEnds(typed());
    if (wParam == L'\r' || isSpace) submit();
    return isSpace || wParam == L'\r' || wParam == L'\x1B' || wParam == L'\n';
}

bool CommandPane::isKeyTaken(WPARAM key) {
    switch (key) {
    case VK_ESCAPE:
        setTyped({});
        if (desk_) desk_->cancel();
        return true;
    case VK_UP:
        recall(-1);
        return true;
    case VK_DOWN:
        recall(+1);
        return true;
    case VK_DELETE:
        if (!desk_ || !typed().empty() || desk_->isBusy()) return false;
        desk_->launch("ERASE");
        return true;
    default:
        return false;
    }
}

void CommandPane::redirect(MSG& message) {
    if (message.hwnd != output_ || message.message != WM_KEYDOWN || ::GetKeyState(VK_CONTROL) < 0) return;
    constexpr std::array reading{VK_UP,  VK_DOWN,  VK_LEFT, VK_RIGHT, VK_HOME,
                                 VK_END, VK_PRIOR, VK_NEXT, VK_SHIFT};
    if (std::ranges::find(reading, static_cast<int>(message.wParam)) != reading.end()) return;
    focus();
    message.hwnd = input_;
}

bool CommandPane::scroll(const MSG& message) {
    if (::WindowFromPoint(message.pt) != output_) return false;
    ::SendMessageW(output_, message.message, message.wParam, message.lParam);
    return true;
}

} // namespace qx::desktop
