#include "console/TracedProgram_posix.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#if defined(__x86_64__)

namespace {

constexpr int cantBeTraced = 120;

struct Call {
    long number;
    const char* name;
};
const Call changes[] = {{SYS_write, "write"},         {SYS_pwrite64, "pwrite"},
                        {SYS_writev, "writev"},       {SYS_openat, "openat"},
                        {SYS_open, "open"},           {SYS_creat, "creat"},
                        {SYS_fsync, "fsync"},         {SYS_fdatasync, "fdatasync"},
                        {SYS_ftruncate, "ftruncate"}, {SYS_rename, "rename"},
                        {SYS_renameat, "renameat"},   {SYS_renameat2, "renameat2"},
                        {SYS_link, "link"},           {SYS_linkat, "linkat"},
                        {SYS_unlink, "unlink"},       {SYS_unlinkat, "unlinkat"},
                        {SYS_mkdir, "mkdir"},         {SYS_mkdirat, "mkdirat"},
                        {SYS_fchmod, "fchmod"},       {SYS_fchown, "fchown"},
                        {SYS_chmod, "chmod"},         {SYS_copy_file_range, "copy_file_range"}};

bool isOpenedForWriting(unsigned long long flags) { return flags & (O_WRONLY | O_RDWR | O_CREAT); }

// Between fork and exec: only what may be called there.
[[noreturn]] void becomeProgram(const char* folder, char* const* words) {
    const bool isReady = chdir(folder) == 0 && dup2(open("/dev/null", O_RDONLY), STDIN_FILENO) >= 0 &&
                         dup2(creat("output", 0600), STDOUT_FILENO) >= 0 &&
                         dup2(creat("errors", 0600), STDERR_FILENO) >= 0 &&
                         ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0;
    if (isReady) execv(words[0], words);
    _exit(cantBeTraced);
}

class Trace {
public:
    Trace(pid_t program, const std::filesystem::path& folder, const Mishap& mishap)
        : program_{program}, folder_{std::filesystem::canonical(folder)}, mishap_{mishap} {}

    std::optional<TracedEnd> follow() {
        int status = 0;
        waitpid(program_, &status, 0);
        if (!WIFSTOPPED(status)) return std::nullopt;
        ptrace(PTRACE_SETOPTIONS, program_, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
        long signal = 0;
        for (;;) {
            ptrace(PTRACE_SYSCALL, program_, nullptr, signal);
            waitpid(program_, &status, 0);
            if (!WIFSTOPPED(status)) break;
            const bool isCall = WSTOPSIG(status) == (SIGTRAP | 0x80);
            signal = isCall ? 0 : WSTOPSIG(status);
            if (isCall) stoppedAtCall();
        }
        if (WIFEXITED(status)) end_.exit = WEXITSTATUS(status);
        return end_;
    }

private:
    // Each call stops twice: before it is done, and after.
    void stoppedAtCall() {
        isInside_ = !isInside_;
        user_regs_struct registers{};
        ptrace(PTRACE_GETREGS, program_, nullptr, &registers);
        if (!isInside_) return giveError(registers);
        const char* name = changeIn(registers);
        if (!name || count_++ != mishap_.change) return;
        end_.hasHappened = true;
        end_.call = name;
        if (mishap_.error == 0) {
            kill(program_, SIGKILL);
            return;
        }
        isRefusing_ = true;
        registers.orig_rax = static_cast<unsigned long long>(-1); // no such call: nothing is done
        ptrace(PTRACE_SETREGS, program_, nullptr, &registers);
    }
    /// The name of the call when it changes a file.
    const char* changeIn(const user_regs_struct& registers) const {
        for (const Call& each : changes)
            if (each.number == static_cast<long>(registers.orig_rax) && isChange(registers)) return each.name;
        return nullptr;
    }
    // The program's own writing only: sanitizers write into pipes all the time.
    bool isChange(const user_regs_struct& registers) const {
        switch (static_cast<long>(registers.orig_rax)) {
        case SYS_write:
        case SYS_pwrite64:
        case SYS_writev:
            return registers.rdi > STDERR_FILENO && isInFolder(registers.rdi);
        case SYS_open:
            return isOpenedForWriting(registers.rsi);
        case SYS_openat:
            return isOpenedForWriting(registers.rdx);
        default:
            return true;
        }
    }
    bool isInFolder(unsigned long long descriptor) const {
        std::error_code ignored;
        const std::string file = std::filesystem::read_symlink(
            "/proc/" + std::to_string(program_) + "/fd/" + std::to_string(descriptor), ignored);
        return file.starts_with(folder_);
    }
    void giveError(user_regs_struct& registers) {
        if (!std::exchange(isRefusing_, false)) return;
        registers.rax = static_cast<unsigned long long>(-static_cast<long long>(mishap_.error));
        ptrace(PTRACE_SETREGS, program_, nullptr, &registers);
    }

    pid_t program_;
    std::string folder_;
    Mishap mishap_;
    TracedEnd end_;
    int count_ = 0;
    bool isInside_ = false, isRefusing_ = false;
};

} // namespace

std::optional<TracedEnd> runTraced(const std::filesystem::path& folder, const std::vector<std::string>& words,
                                   const Mishap& mishap) {
    // A leak check traces its own process, which only one can.
    setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
    std::vector<char*> arguments;
    for (const std::string& each : words) arguments.push_back(const_cast<char*>(each.c_str()));
    arguments.push_back(nullptr);
    const pid_t program = fork();
    if (program == 0) becomeProgram(folder.c_str(), arguments.data());
    return Trace{program, folder, mishap}.follow();
}

#else

std::optional<TracedEnd> runTraced(const std::filesystem::path&, const std::vector<std::string>&,
                                   const Mishap&) {
    return std::nullopt;
}

#endif
