#include "console/runInFolder.h"

#include "os/encoding.h"

#include <algorithm>
#include <windows.h>

namespace {

/// A file that a child process may use.
class SharedFile {
public:
    SharedFile(const std::filesystem::path& path, DWORD access, DWORD creation) {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        handle = CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, creation,
                             FILE_ATTRIBUTE_NORMAL, nullptr);
    }
    ~SharedFile() { CloseHandle(handle); }
    SharedFile(const SharedFile&) = delete;
    SharedFile& operator=(const SharedFile&) = delete;

    HANDLE handle;
};

int exitCodeOf(const PROCESS_INFORMATION& process) {
    DWORD code = 0;
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    return static_cast<int>(code);
}

} // namespace

int runInFolder(const std::filesystem::path& folder, const std::string& commandLine) {
    const SharedFile input{folder / "input", GENERIC_READ, OPEN_EXISTING};
    const SharedFile output{folder / "output", GENERIC_WRITE, CREATE_ALWAYS};
    const SharedFile errors{folder / "errors", GENERIC_WRITE, CREATE_ALWAYS};
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = input.handle;
    start.hStdOutput = output.handle;
    start.hStdError = errors.handle;
    std::wstring command = qx::os::toWide(commandLine);
    std::ranges::replace(command, L'\'', L'"');
    PROCESS_INFORMATION process{};
    const BOOL started = CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                        folder.c_str(), &start, &process);
    return started ? exitCodeOf(process) : -1;
}
