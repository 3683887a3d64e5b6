#include "console/terminalLine.h"

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

bool takeInterrupt(DWORD patience = 0) {
    return ::WaitForSingleObject(interrupt(), patience) == WAIT_OBJECT_0;
}

BOOL WINAPI noteInterrupt(DWORD event) {
    if (event != CTRL_C_EVENT) return FALSE;
    ::SetEvent(interrupt());
    return TRUE;
}

enum class Piece { text, interrupted, end };

/// A console speaks UTF-16, whatever code page programs have set.
class ConsoleInput {
public:
    Piece read(std::string& text) {
        std::array<wchar_t, 4096> buffer{};
        DWORD count = 0;
        ::SetLastError(ERROR_SUCCESS);
        const BOOL done = ::ReadConsoleW(::GetStdHandle(STD_INPUT_HANDLE), buffer.data(),
                                         static_cast<DWORD>(buffer.size()), &count, nullptr);
        if (::GetLastError() == ERROR_OPERATION_ABORTED) return Piece::interrupted;
        if (!done || count == 0 || buffer[0] == L'\x1A') return Piece::end;
        wide_.append(buffer.data(), count);
        // Half a character waits for its other half.
        const bool isHalf = wide_.back() >= 0xD800 && wide_.back() < 0xDC00;
        const std::wstring rest = isHalf ? std::wstring(1, wide_.back()) : std::wstring{};
        if (isHalf) wide_.pop_back();
        text += os::toUtf8(std::exchange(wide_, rest));
        return Piece::text;
    }

private:
    std::wstring wide_;
};

Piece readPipe(std::string& text) {
    std::array<char, 4096> buffer{};
    DWORD count = 0;
    const BOOL done = ::ReadFile(::GetStdHandle(STD_INPUT_HANDLE), buffer.data(),
                                 static_cast<DWORD>(buffer.size()), &count, nullptr);
    if (!done || count == 0) return Piece::end;
    text += std::string_view{buffer.data(), count};
    return Piece::text;
}

Piece readPiece(std::string& text) {
    static ConsoleInput console;
    return os::isTerminal(os::StandardStream::input) ? console.read(text) : readPipe(text);
}

std::string& pending() {
    static std::string text;
    return text;
}

bool takePendingLine(std::string& line) {
    const std::size_t end = pending().find('\n');
    if (end == std::string::npos) return false;
    line = pending().substr(0, end);
    if (line.ends_with('\r')) line.pop_back();
    pending().erase(0, end + 1);
    return true;
}

LineRead interrupted() {
    pending().clear();
    return LineRead::interrupted;
}

} // namespace

void catchInterrupts() {
    interrupt();
    ::SetConsoleCtrlHandler(noteInterrupt, TRUE);
}

LineRead readLine(std::string& line) {
    constexpr DWORD handlerDelay = 1000; // milliseconds; it runs in a thread of its own
    for (;;) {
        if (takeInterrupt()) return interrupted();
        if (takePendingLine(line)) return LineRead::line;
        const Piece piece = readPiece(pending());
        if (piece == Piece::end) break;
        if (piece == Piece::text) continue;
        takeInterrupt(handlerDelay);
        return interrupted();
    }
    if (pending().empty()) return LineRead::end;
    line = std::exchange(pending(), {});
    return LineRead::line;
}

} // namespace qx::console
