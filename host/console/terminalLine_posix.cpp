#include "console/terminalLine.h"
#include "console/terminalPieces.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <string_view>
#include <unistd.h>

namespace qx::console {
namespace {

volatile std::sig_atomic_t interrupted = 0;

void noteInterrupt(int) { interrupted = 1; }

} // namespace

// Without SA_RESTART, so that a signal ends the waiting for input.
void catchInterrupts() {
    struct sigaction action {};
    action.sa_handler = noteInterrupt;
    sigaction(SIGINT, &action, nullptr);
}

bool takeInterrupt() {
    const bool was = interrupted != 0;
    interrupted = 0;
    return was;
}

bool readPiece(std::string& text) {
    std::array<char, 4096> buffer{};
    const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) return true;
    if (count <= 0) return false;
    text += std::string_view{buffer.data(), static_cast<std::size_t>(count)};
    return true;
}

} // namespace qx::console
