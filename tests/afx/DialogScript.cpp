#include "afx/DialogScript.h"

#include "afx/ModalLoop.h"

#include <chrono>
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <utility>

namespace qx::tests {
namespace {

constexpr auto patience = std::chrono::seconds{20};

/// Ends the program unless `isOver` becomes true in time.
void watch(const std::atomic<bool>& isOver) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!isOver && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds{10});
    if (isOver) return;
    std::fputs("A dialog hangs.\n", stderr);
    std::fflush(nullptr);
    ::TerminateProcess(::GetCurrentProcess(), 124);
}

void putIntoClipboard(HWND owner, const std::wstring& text) {
    ASSERT_TRUE(::OpenClipboard(owner));
    ::EmptyClipboard();
    const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, size);
    std::memcpy(::GlobalLock(memory), text.c_str(), size);
    ::GlobalUnlock(memory);
    ::SetClipboardData(CF_UNICODETEXT, memory);
    ::CloseClipboard();
}

void pressAndRelease(HWND window, WORD virtualKey) {
    ::PostMessageW(window, WM_KEYDOWN, virtualKey, 1);
    ::PostMessageW(window, WM_KEYUP, virtualKey, static_cast<LPARAM>(0xC0000001));
}

} // namespace

DialogScript::DialogScript() : watchdog_{[this] { watch(isOver_); }} {
    afx::setIdleStep([this](HWND dialog) { return takeStep(dialog); });
}

DialogScript::~DialogScript() {
    afx::setIdleStep({});
    isOver_ = true;
    watchdog_.join();
    EXPECT_TRUE(steps_.empty()) << "no dialog came for the last steps";
    EXPECT_FALSE(wasCancelled_) << "nothing closed a dialog";
}

bool DialogScript::takeStep(HWND dialog) {
    if (steps_.empty()) {
        wasCancelled_ = true;
        ::PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        return true;
    }
    const Step step = std::move(steps_.front());
    steps_.pop_front();
    step(dialog);
    return true;
}

DialogScript& DialogScript::look(Step step) {
    steps_.push_back(std::move(step));
    return *this;
}

DialogScript& DialogScript::type(int control, std::wstring_view characters) {
    return look([control, text = std::wstring{characters}](HWND dialog) {
        for (const wchar_t each : text)
            ::PostMessageW(::GetDlgItem(dialog, control), WM_CHAR, static_cast<WPARAM>(each), 1);
    });
}

DialogScript& DialogScript::press(WORD virtualKey) {
    return look([virtualKey](HWND dialog) {
        const HWND focused = ::GetFocus();
        pressAndRelease(focused ? focused : dialog, virtualKey);
    });
}

DialogScript& DialogScript::focus(int control) {
    return look([control](HWND dialog) {
        const HWND window = ::GetDlgItem(dialog, control);
        ::SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(window), TRUE);
    });
}

DialogScript& DialogScript::select(int control, int first, int behind) {
    return look([=](HWND dialog) {
        ::SendDlgItemMessageW(dialog, control, EM_SETSEL, static_cast<WPARAM>(first), behind);
    });
}

DialogScript& DialogScript::paste(int control, std::wstring text) {
    return look([control, text = std::move(text)](HWND dialog) {
        putIntoClipboard(dialog, text);
        ::SendDlgItemMessageW(dialog, control, WM_PASTE, 0, 0);
    });
}

DialogScript& DialogScript::click(int control) {
    return look([control](HWND dialog) { ::SendDlgItemMessageW(dialog, control, BM_CLICK, 0, 0); });
}

DialogScript& DialogScript::clickTwice(int control) {
    return look([control](HWND dialog) {
        const LPARAM inside = MAKELPARAM(5, 5);
        for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP})
            ::SendDlgItemMessageW(dialog, control, message, 0, inside);
    });
}

DialogScript& DialogScript::closeBox() {
    return look([](HWND dialog) { ::PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); });
}

std::wstring textOf(HWND dialog, int control) {
    wchar_t text[256] = {};
    ::GetDlgItemTextW(dialog, control, text, static_cast<int>(std::size(text)));
    return text;
}

bool isChecked(HWND dialog, int control) { return ::IsDlgButtonChecked(dialog, control) == BST_CHECKED; }

bool isEnabled(HWND dialog, int control) { return ::IsWindowEnabled(::GetDlgItem(dialog, control)); }

} // namespace qx::tests
