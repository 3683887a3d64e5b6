#include "console/terminalLine.h"
#include "console/terminalPieces.h"

#include "os/encoding.h"
#include "os/terminal.h"

#include <array>
#include <string_view>
#include <utility>
#include <windows.h>

namespace qx::console {
namespace {

/// Set by Ctrl+C until a line has been given up for it.
HANDLE interrupt() {
    static const HANDLE event = ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
    return event;
}

BOOL WINAPI noteInterrupt(DWORD event) {
    if (event != CTRL_C_EVENT) return FALSE;
    ::SetEvent(interrupt());
    return TRUE;
}

// The handler runs in a thread of its own: waited for, so that it does not interrupt the next line as well.
void awaitInterrupt() {
    constexpr DWORD handlerDelay = 1000; // milliseconds
    ::WaitForSingleObject(interrupt(), handlerDelay);
    ::SetEvent(interrupt());
}

/// A console speaks UTF-16, whatever code page programs have set.
class ConsoleInput {
public:
    bool read(std::string& text) {
        std::array<wchar_t, 4096> buffer{};
        DWORD count = 0;
        ::SetLastError(ERROR_SUCCESS);
        const BOOL done = ::ReadConsoleW(::GetStdHandle(STD_INPUT_HANDLE), buffer.data(),
                                         static_cast<DWORD>(buffer.size()), &count, nullptr);
        if (::GetLastError() == ERROR_OPERATION_ABORTED) {
            awaitInterrupt();
            return true;
        }
        if (!done || count == 0 || buffer[0] == L'\x1A') return false;
        wide_.append(buffer.data(), count);
        // Half a character waits for its other half.
        const bool isHalf = wide_.back() >= 0xD800 && wide_.back() < 0xDC00;
        const std::wstring rest = isHalf ? std::wstring(1, wide_.back()) : std::wstring{};
        if (isHalf) wide_.pop_back();
        text += os::toUtf8(std::exchange(wide_, rest));
        return true;
    }

private:
    std::wstring wide_;
};

bool readPipe(std::string& text) {
    std::array<char, 4096> buffer{};
    DWORD count = 0;
    const BOOL done = ::ReadFile(::GetStdHandle(STD_INPUT_HANDLE), buffer.data(),
                                 static_cast<DWORD>(buffer.size()), &count, nullptr);
    if (!done || count == 0) return false;
    text += std::string_view{buffer.data(), count};
    return true;
}

} // namespace

void catchInterrupts() {
    interrupt();
    ::SetConsoleCtrlHandler(noteInterrupt, TRUE);
}

bool takeInterrupt() { return ::WaitForSingleObject(interrupt(), 0) == WAIT_OBJECT_0; }

bool readPiece(std::string& text) {
    static ConsoleInput console;
    return os::isTerminal(os::StandardStream::input) ? console.read(text) : readPipe(text);
}

} // namespace qx::console
