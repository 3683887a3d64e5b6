#include "afx/ModalLoop.h"

#include "afx/WindowMap.h"

#include <utility>

namespace qx::afx {
namespace {

IdleStep idleStep;
DialogEnd dialogEnd;
HWND programWindow = nullptr;
std::function<bool()> dialogsShown;
std::exception_ptr kept;

/// The window first, then its parents up to the dialog. Only objects take part.
bool isTakenEarly(HWND dialog, MSG& message) {
    for (HWND window = message.hwnd; window; window = ::GetParent(window)) {
        CWnd* object = WindowMap::instance().attached(window);
        if (object && object->PreTranslateMessage(&message)) return true;
        if (window == dialog) break;
    }
    return false;
}

void pass(HWND dialog, MSG& message) {
    try {
        if (isTakenEarly(dialog, message)) return;
    } catch (...) {
        keepException();
        return;
    }
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
}

void idle(HWND dialog) {
    WindowMap::instance().dropTemporary();
    if (!idleStep || !idleStep(dialog)) ::WaitMessage();
}

} // namespace

void setIdleStep(IdleStep step) { idleStep = std::move(step); }

void setDialogEnd(DialogEnd end) { dialogEnd = std::move(end); }

void tellDialogEnd(HWND dialog, UINT templateId, UINT command) {
    if (dialogEnd) dialogEnd(dialog, templateId, command);
}

void setDialogsShown(std::function<bool()> shown) { dialogsShown = std::move(shown); }

bool areDialogsShown() { return !dialogsShown || dialogsShown(); }

void setMainWindow(HWND window) { programWindow = window; }

HWND mainWindow() { return programWindow; }

void runModalLoop(HWND dialog, const std::function<bool()>& isRunning) {
    while (isRunning() && !kept) {
        MSG message;
        if (!::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            // Looking for messages lets in those that were sent, and these may have ended it.
            if (isRunning() && !kept) idle(dialog);
        } else if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam)); // for the loop outside
            break;
        } else {
            pass(dialog, message);
        }
    }
    WindowMap::instance().dropTemporary();
}

void keepException() {
    if (!kept) kept = std::current_exception();
}

void rethrowException() {
    if (kept) std::rethrow_exception(std::exchange(kept, nullptr));
}

std::size_t attachedWindows() { return WindowMap::instance().attachedCount(); }

} // namespace qx::afx
