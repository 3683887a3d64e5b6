#include "console/terminalLine.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace qx::console {
namespace {

volatile std::sig_atomic_t interrupted = 0;

void noteInterrupt(int) { interrupted = 1; }

bool takeInterrupt() {
    const bool was = interrupted != 0;
    interrupted = 0;
    return was;
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

} // namespace

// Without SA_RESTART, so that a signal ends the waiting for input.
void catchInterrupts() {
    struct sigaction action {};
    action.sa_handler = noteInterrupt;
    sigaction(SIGINT, &action, nullptr);
}

LineRead readLine(std::string& line) {
    std::array<char, 4096> buffer{};
    for (;;) {
        if (takeInterrupt()) {
            pending().clear();
            return LineRead::interrupted;
        }
        if (takePendingLine(line)) return LineRead::line;
        const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        pending() += std::string_view{buffer.data(), static_cast<std::size_t>(count)};
    }
    if (pending().empty()) return LineRead::end;
    line = std::exchange(pending(), {});
    return LineRead::line;
}

} // namespace qx::console
