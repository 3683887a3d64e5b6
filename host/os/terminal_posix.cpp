#include "terminal.h"

#include <csignal>
#include <filesystem>
#include <unistd.h>

namespace qx::os {

bool isTerminal(StandardStream stream) { return ::isatty(static_cast<int>(stream)) == 1; }

std::string programFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? "." : program.parent_path().string();
}

std::vector<std::string> programArguments(int count, char** values) { return {values + 1, values + count}; }

void useUtf8Streams() {} // as they are

void reportWriteErrors() { std::signal(SIGXFSZ, SIG_IGN); }

} // namespace qx::os
